// The host's system registry: run-time classes, the dynamic linker and the command stack.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "host/api/acadstatus.h"
#include "host/api/hostexport.h"

class ACHOST_EXPORT AcRxClass {
public:
    AcRxClass(const wchar_t* name, const AcRxClass* parent) : m_name(name), m_parent(parent) {}
    const wchar_t* name() const { return m_name; }
    bool isDerivedFrom(const AcRxClass* other) const;

private:
    const wchar_t* m_name;
    const AcRxClass* m_parent;
};

class ACHOST_EXPORT AcRxObject {
public:
    virtual ~AcRxObject();
    static const AcRxClass* desc();
    virtual const AcRxClass* isA() const;
};

// Returns the object as a T when its class derives from T's, else null: the registry's checked cast.
template <class T>
T* AcRxCast(AcRxObject* object) {
    if (object == nullptr || !object->isA()->isDerivedFrom(T::desc())) return nullptr;
    return static_cast<T*>(object);
}

class ACHOST_EXPORT AcRxDictionary : public AcRxObject {
public:
    static const AcRxClass* desc();
    const AcRxClass* isA() const override;

    AcRxObject* at(const wchar_t* key) const;
    void atPut(const wchar_t* key, AcRxObject* object);

private:
    std::map<std::wstring, AcRxObject*> m_entries;
};

ACHOST_EXPORT AcRxDictionary* acrxSysRegistry();

// The key of the dynamic linker and of the command stack in the system registry.
inline constexpr const wchar_t* ACRX_DYNAMIC_LINKER = L"DynamicLinker";
inline constexpr const wchar_t* ACRX_COMMAND_DOCK = L"ACAD_REGISTERED_COMMANDS";

class ACHOST_EXPORT AcRxDynamicLinker : public AcRxObject {
public:
    static const AcRxClass* desc();
    const AcRxClass* isA() const override;

    bool unlockApplication(void* appId);
    bool registerAppMDIAware(void* appId);
    bool isApplicationLocked(void* appId) const;
    bool isAppMDIAware(void* appId) const;
    // For the host, when it has unloaded an application: its id says nothing any more.
    void forgetApplication(void* appId);

private:
    std::vector<void*> m_unlocked;
    std::vector<void*> m_mdiAware;
};

using AcRxFunctionPtr = void (*)();

class AcEdUIContext;
class AcEdCommand;

class ACHOST_EXPORT AcRxResourceInstance {
public:
    static AcRxResourceInstance empty() { return {}; }
};

// Command flags.
constexpr int ACRX_CMD_MODAL = 0;
constexpr int ACRX_CMD_TRANSPARENT = 1;

class ACHOST_EXPORT AcEdCommandStack : public AcRxObject {
public:
    struct Command {
        std::wstring group;
        std::wstring globalName;
        std::wstring localName;
        int flags = 0;
        AcRxFunctionPtr function = nullptr;
    };

    static const AcRxClass* desc();
    const AcRxClass* isA() const override;

    Acad::ErrorStatus addCommand(const wchar_t* group, const wchar_t* globalName,
                                 const wchar_t* localName, int flags, AcRxFunctionPtr function,
                                 AcEdUIContext* context = nullptr, int functionCode = -1,
                                 AcRxResourceInstance resources = AcRxResourceInstance::empty(),
                                 AcEdCommand** command = nullptr);
    Acad::ErrorStatus removeGroup(const wchar_t* group);

    // For the host's command line: the command last added under this global or local name
    // (case-insensitive, a leading "_" or "." ignored), or null.
    const Command* lookup(const std::wstring& name) const;
    const std::vector<Command>& commands() const { return m_commands; }

private:
    std::vector<Command> m_commands;
};
