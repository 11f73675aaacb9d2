// Loads CAD modules into the host as a CAD program does: each file is checked before its code runs,
// then initialised through its entry point; each keeps a state and the reason it failed.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "host/api/acadstatus.h"

enum class ModuleState {
    Invalid,  // the file is no loadable module, or its entry point refused to start
    Loaded,   // mapped into the process, exports and interface version checked
    Running,  // initialised: its entry point answered the initialisation message
    Stopped,  // unloaded again
};

using ModuleEntryPoint = AcRx::AppRetCode (*)(AcRx::AppMsgCode, void*);

// One module the host was asked to load.
class ModuleRecord final {
public:
    explicit ModuleRecord(std::filesystem::path path);
    ~ModuleRecord();
    ModuleRecord(const ModuleRecord&) = delete;
    ModuleRecord& operator=(const ModuleRecord&) = delete;

    const std::filesystem::path& path() const { return m_path; }
    // How messages name the module: its file name.
    std::string name() const { return m_path.filename().string(); }
    ModuleState state() const { return m_state; }
    bool hasError() const { return !m_errorString.empty(); }
    const std::string& errorString() const { return m_errorString; }
    // The id it is told at initialisation and unload; unique among the loaded modules.
    void* appId() const { return const_cast<ModuleRecord*>(this); }
    unsigned apiVersion() const { return m_apiVersion; }
    // Whether the address lies in the module's code or data: whose a registered command is.
    bool contains(const void* address) const;

private:
    friend class ModuleLoader;

    std::filesystem::path m_path;
    ModuleState m_state = ModuleState::Invalid;
    std::string m_errorString;
    void* m_handle = nullptr;
    // Where the module's image lay in memory, for what it leaves behind once it is gone.
    std::vector<std::pair<std::uintptr_t, std::uintptr_t>> m_image;
    ModuleEntryPoint m_entryPoint = nullptr;
    unsigned m_apiVersion = 0;
};

// The outcome of a load or unload: empty when it went well, else one line naming the file and why.
class [[nodiscard]] ModuleStatus {
public:
    static ModuleStatus ok() { return ModuleStatus(); }
    static ModuleStatus error(std::string message) { return ModuleStatus(std::move(message)); }
    bool isOk() const { return m_errorString.empty(); }
    const std::string& errorString() const { return m_errorString; }

private:
    ModuleStatus() = default;
    explicit ModuleStatus(std::string message) : m_errorString(std::move(message)) {}
    std::string m_errorString;
};

class ModuleLoader final {
public:
    // Warnings about modules that misbehave but leave the host working (commands left behind).
    using WarningHandler = std::function<void(const std::string&)>;

    // The interface version this host accepts: major 22.
    static constexpr unsigned kApiMajor = 22;

    explicit ModuleLoader(WarningHandler warnings = {});
    // The host is going: every running module is told to unload, locked or not.
    ~ModuleLoader();
    ModuleLoader(const ModuleLoader&) = delete;
    ModuleLoader& operator=(const ModuleLoader&) = delete;

    ModuleStatus load(const std::filesystem::path& path);
    // By path, file name, or file name without ".arx" (case ignored). A module that did not unlock
    // itself stays loaded, as does one whose entry point refuses the unload message.
    ModuleStatus unload(const std::string& module);

    // The running modules, in the order they were loaded.
    std::vector<const ModuleRecord*> modules() const;
    const ModuleRecord* find(const std::string& module) const;

private:
    ModuleRecord* findRunning(const std::string& module) const;
    bool isLoaded(const std::filesystem::path& path) const;
    ModuleStatus fail(ModuleRecord& record, std::string reason);
    bool open(ModuleRecord& record, std::string& reason);
    bool initialise(ModuleRecord& record, std::string& reason);
    // Takes the module out of the process and clears up what it left registered.
    void close(ModuleRecord& record);
    void removeLeftovers(const ModuleRecord& record);
    void warn(const std::string& text) const;

    WarningHandler m_warnings;
    std::vector<std::unique_ptr<ModuleRecord>> m_modules;
};
