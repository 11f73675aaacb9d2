// The document manager's reactor list and the notifications it passes on.
#include "host/api/acapdocmanager.h"

#include <algorithm>

const AcRxClass* AcApDocManagerReactor::desc() {
    static const AcRxClass cls(L"AcApDocManagerReactor", AcRxObject::desc());
    return &cls;
}

const AcRxClass* AcApDocManagerReactor::isA() const { return desc(); }

void AcApDocManagerReactor::documentCreateStarted(AcApDocument*) {}
void AcApDocManagerReactor::documentCreated(AcApDocument*) {}
void AcApDocManagerReactor::documentToBeDestroyed(AcApDocument*) {}
void AcApDocManagerReactor::documentDestroyed(const wchar_t*) {}
void AcApDocManagerReactor::documentCreateCanceled(AcApDocument*) {}
void AcApDocManagerReactor::documentBecameCurrent(AcApDocument*) {}

void AcApDocManager::addReactor(AcApDocManagerReactor* reactor) {
    if (reactor == nullptr) return;
    if (std::find(m_reactors.begin(), m_reactors.end(), reactor) == m_reactors.end())
        m_reactors.push_back(reactor);
}

void AcApDocManager::removeReactor(AcApDocManagerReactor* reactor) {
    std::erase(m_reactors, reactor);
}

void AcApDocManager::documentCreated(AcApDocument* document) {
    m_current = document;
    // A reactor may remove itself while it is told; walk a copy.
    const auto reactors = m_reactors;
    for (auto* reactor : reactors) reactor->documentCreated(document);
    for (auto* reactor : reactors) reactor->documentBecameCurrent(document);
}

void AcApDocManager::documentActivated(AcApDocument* document) {
    if (document == nullptr || document == m_current) return;
    m_current = document;
    const auto reactors = m_reactors;
    for (auto* reactor : reactors) reactor->documentBecameCurrent(document);
}

void AcApDocManager::documentToBeDestroyed(AcApDocument* document) {
    const auto reactors = m_reactors;
    const std::wstring fileName = document ? document->fileName() : std::wstring();
    for (auto* reactor : reactors) reactor->documentToBeDestroyed(document);
    if (m_current == document) m_current = nullptr;
    for (auto* reactor : reactors) reactor->documentDestroyed(fileName.c_str());
}

AcApDocManager* acDocManagerPtr() {
    static AcApDocManager manager;
    return &manager;
}
