// The host's open documents and the reactors that hear of their creation and destruction.
#pragma once

#include <string>
#include <vector>

#include "host/api/acrxregistry.h"
#include "host/api/hostexport.h"

class AcDbDatabase;

class ACHOST_EXPORT AcApDocument {
public:
    AcApDocument(AcDbDatabase* database, std::wstring fileName)
        : m_database(database), m_fileName(std::move(fileName)) {}
    AcDbDatabase* database() const { return m_database; }
    const std::wstring& fileName() const { return m_fileName; }

private:
    AcDbDatabase* m_database;
    std::wstring m_fileName;
};

class ACHOST_EXPORT AcApDocManagerReactor : public AcRxObject {
public:
    static const AcRxClass* desc();
    const AcRxClass* isA() const override;

    virtual void documentCreateStarted(AcApDocument* document);
    virtual void documentCreated(AcApDocument* document);
    virtual void documentToBeDestroyed(AcApDocument* document);
    virtual void documentDestroyed(const wchar_t* fileName);
    virtual void documentCreateCanceled(AcApDocument* document);
    virtual void documentBecameCurrent(AcApDocument* document);
};

class ACHOST_EXPORT AcApDocManager {
public:
    void addReactor(AcApDocManagerReactor* reactor);
    void removeReactor(AcApDocManagerReactor* reactor);
    const std::vector<AcApDocManagerReactor*>& reactors() const { return m_reactors; }

    AcApDocument* curDocument() const { return m_current; }

    // Called by the host as documents come and go; the reactors hear of it in order of
    // registration. A created document becomes the current one.
    void documentCreated(AcApDocument* document);
    // Another open document becomes the current one (the user switched drawings).
    void documentActivated(AcApDocument* document);
    void documentToBeDestroyed(AcApDocument* document);

private:
    std::vector<AcApDocManagerReactor*> m_reactors;
    AcApDocument* m_current = nullptr;
};

ACHOST_EXPORT AcApDocManager* acDocManagerPtr();
