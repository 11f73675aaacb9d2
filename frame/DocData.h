// Per-document data: a record for each open drawing, dropped when the host destroys the drawing.
#pragma once

#include <cstddef>
#include <map>

#include "host/api/acapdocmanager.h"

// What the module keeps about one drawing; nothing yet.
struct CDocData {};

// A reactor on the host's document manager that owns one T per document and erases it when the
// document is about to be destroyed. It registers itself when constructed and withdraws when
// destroyed.
template <class T>
class AsdkDataManager final : public AcApDocManagerReactor {
public:
    AsdkDataManager() { acDocManagerPtr()->addReactor(this); }
    ~AsdkDataManager() override {
        acDocManagerPtr()->removeReactor(this);
        m_dataMap.clear();
    }
    AsdkDataManager(const AsdkDataManager&) = delete;
    AsdkDataManager& operator=(const AsdkDataManager&) = delete;

    void documentToBeDestroyed(AcApDocument* document) override { m_dataMap.erase(document); }

    // The document's record, made with its default value when it has none.
    T& docData(AcApDocument* document) { return m_dataMap[document]; }
    std::size_t documentCount() const { return m_dataMap.size(); }

private:
    std::map<AcApDocument*, T> m_dataMap;
};

// The module's one manager, registered while the module is loaded.
extern AsdkDataManager<CDocData> DocDataManager;
