// Run-time classes, the system registry with its dynamic linker and command stack.
#include "host/api/acrxregistry.h"

#include <algorithm>

#include "text/CaseRules.h"

bool AcRxClass::isDerivedFrom(const AcRxClass* other) const {
    for (const AcRxClass* c = this; c != nullptr; c = c->m_parent) {
        if (c == other) return true;
    }
    return false;
}

AcRxObject::~AcRxObject() = default;

const AcRxClass* AcRxObject::desc() {
    static const AcRxClass cls(L"AcRxObject", nullptr);
    return &cls;
}

const AcRxClass* AcRxObject::isA() const { return desc(); }

const AcRxClass* AcRxDictionary::desc() {
    static const AcRxClass cls(L"AcRxDictionary", AcRxObject::desc());
    return &cls;
}

const AcRxClass* AcRxDictionary::isA() const { return desc(); }

AcRxObject* AcRxDictionary::at(const wchar_t* key) const {
    if (key == nullptr) return nullptr;
    const auto it = m_entries.find(key);
    return it == m_entries.end() ? nullptr : it->second;
}

void AcRxDictionary::atPut(const wchar_t* key, AcRxObject* object) { m_entries[key] = object; }

AcRxDictionary* acrxSysRegistry() {
    static AcRxDynamicLinker linker;
    static AcEdCommandStack commands;
    static AcRxDictionary registry = [] {
        AcRxDictionary d;
        d.atPut(ACRX_DYNAMIC_LINKER, &linker);
        d.atPut(ACRX_COMMAND_DOCK, &commands);
        return d;
    }();
    return &registry;
}

const AcRxClass* AcRxDynamicLinker::desc() {
    static const AcRxClass cls(L"AcRxDynamicLinker", AcRxObject::desc());
    return &cls;
}

const AcRxClass* AcRxDynamicLinker::isA() const { return desc(); }

namespace {

bool addOnce(std::vector<void*>& list, void* appId) {
    if (std::find(list.begin(), list.end(), appId) == list.end()) list.push_back(appId);
    return true;
}

bool contains(const std::vector<void*>& list, void* appId) {
    return std::find(list.begin(), list.end(), appId) != list.end();
}

}  // namespace

bool AcRxDynamicLinker::unlockApplication(void* appId) { return addOnce(m_unlocked, appId); }
bool AcRxDynamicLinker::registerAppMDIAware(void* appId) { return addOnce(m_mdiAware, appId); }
bool AcRxDynamicLinker::isApplicationLocked(void* appId) const {
    return !contains(m_unlocked, appId);
}
bool AcRxDynamicLinker::isAppMDIAware(void* appId) const { return contains(m_mdiAware, appId); }
void AcRxDynamicLinker::forgetApplication(void* appId) {
    std::erase(m_unlocked, appId);
    std::erase(m_mdiAware, appId);
}

const AcRxClass* AcEdCommandStack::desc() {
    static const AcRxClass cls(L"AcEdCommandStack", AcRxObject::desc());
    return &cls;
}

const AcRxClass* AcEdCommandStack::isA() const { return desc(); }

Acad::ErrorStatus AcEdCommandStack::addCommand(const wchar_t* group, const wchar_t* globalName,
                                               const wchar_t* localName, int flags,
                                               AcRxFunctionPtr function, AcEdUIContext*, int,
                                               AcRxResourceInstance, AcEdCommand**) {
    if (group == nullptr || globalName == nullptr || function == nullptr) return Acad::eInvalidInput;
    m_commands.push_back(Command{group, globalName, localName ? localName : globalName, flags,
                                 function});
    return Acad::eOk;
}

Acad::ErrorStatus AcEdCommandStack::removeGroup(const wchar_t* group) {
    if (group == nullptr) return Acad::eInvalidInput;
    const auto removed = std::erase_if(m_commands, [&](const Command& c) { return c.group == group; });
    return removed == 0 ? Acad::eKeyNotFound : Acad::eOk;
}

const AcEdCommandStack::Command* AcEdCommandStack::lookup(const std::wstring& name) const {
    std::wstring key = MakeUpper(name);
    while (!key.empty() && (key.front() == L'_' || key.front() == L'.')) key.erase(0, 1);
    for (auto it = m_commands.rbegin(); it != m_commands.rend(); ++it) {
        if (MakeUpper(it->globalName) == key || MakeUpper(it->localName) == key) return &*it;
    }
    return nullptr;
}
