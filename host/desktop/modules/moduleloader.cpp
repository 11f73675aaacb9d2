// Loading, initialising and unloading modules, and clearing up after modules that forget to.
#include "host/desktop/modules/moduleloader.h"

#include <dlfcn.h>
#include <link.h>

#include <algorithm>
#include <cctype>
#include <exception>
#include <set>
#include <system_error>

#include "host/api/acapdocmanager.h"
#include "host/api/acrxregistry.h"
#include "host/desktop/modules/moduleexports.h"
#include "text/TextFile.h"

namespace {

constexpr const char* kEntryPointName = "acrxEntryPoint";
constexpr const char* kApiVersionName = "acrxGetApiVersion";

using ApiVersion = unsigned (*)();

AcRxDynamicLinker* dynamicLinker() {
    return AcRxCast<AcRxDynamicLinker>(acrxSysRegistry()->at(ACRX_DYNAMIC_LINKER));
}

AcEdCommandStack* commandStack() {
    return AcRxCast<AcEdCommandStack>(acrxSysRegistry()->at(ACRX_COMMAND_DOCK));
}

std::string lower(std::string text) {
    for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

// The loader's message without the file name it starts with; the caller names the file itself.
std::string loaderError(const std::filesystem::path& path) {
    const char* text = dlerror();
    std::string message = text ? text : "unknown error";
    const std::string prefix = path.string() + ": ";
    if (message.starts_with(prefix)) message.erase(0, prefix.size());
    return message;
}

using ImageRanges = std::vector<std::pair<std::uintptr_t, std::uintptr_t>>;

// The loaded segments of the module behind `handle`.
ImageRanges imageOf(void* handle) {
    struct Search {
        const link_map* map = nullptr;
        ImageRanges ranges;
    } search;
    if (dlinfo(handle, RTLD_DI_LINKMAP, &search.map) != 0 || search.map == nullptr) return {};
    dl_iterate_phdr(
        [](dl_phdr_info* info, std::size_t, void* data) {
            auto& s = *static_cast<Search*>(data);
            if (info->dlpi_addr != s.map->l_addr || info->dlpi_name == nullptr ||
                std::string_view(info->dlpi_name) != s.map->l_name)
                return 0;
            for (int i = 0; i < info->dlpi_phnum; ++i) {
                const auto& segment = info->dlpi_phdr[i];
                if (segment.p_type != PT_LOAD) continue;
                const std::uintptr_t begin = info->dlpi_addr + segment.p_vaddr;
                s.ranges.emplace_back(begin, begin + segment.p_memsz);
            }
            return 1;
        },
        &search);
    return search.ranges;
}

// Compares addresses only: the module may be gone, nothing there is read.
bool inImage(const ImageRanges& image, const void* address) {
    const auto value = reinterpret_cast<std::uintptr_t>(address);
    return std::any_of(image.begin(), image.end(), [value](const auto& range) {
        return value >= range.first && value < range.second;
    });
}

std::string versionText(unsigned version) {
    return std::to_string(version >> 16) + "." + std::to_string(version & 0xFFFF);
}

// Calls the module's entry point; an exception is the module's refusal, not the host's end.
bool send(ModuleEntryPoint entry, AcRx::AppMsgCode message, void* appId, std::string& reason) {
    try {
        const AcRx::AppRetCode answer = entry(message, appId);
        if (answer == AcRx::kRetOK) return true;
        reason = std::string(kEntryPointName) + " answered " + std::to_string(answer);
    } catch (const std::exception& e) {
        reason = std::string(kEntryPointName) + " threw \"" + e.what() + "\"";
    } catch (...) {
        reason = std::string(kEntryPointName) + " threw an exception";
    }
    return false;
}

}  // namespace

ModuleRecord::ModuleRecord(std::filesystem::path path) : m_path(std::move(path)) {}

ModuleRecord::~ModuleRecord() = default;

bool ModuleRecord::contains(const void* address) const { return inImage(m_image, address); }

ModuleLoader::ModuleLoader(WarningHandler warnings) : m_warnings(std::move(warnings)) {}

ModuleLoader::~ModuleLoader() {
    while (!m_modules.empty()) {
        ModuleRecord& record = *m_modules.back();
        std::string ignored;
        send(record.m_entryPoint, AcRx::kUnloadAppMsg, record.appId(), ignored);
        close(record);
        m_modules.pop_back();
    }
}

void ModuleLoader::warn(const std::string& text) const {
    if (m_warnings) m_warnings(text);
}

ModuleStatus ModuleLoader::fail(ModuleRecord& record, std::string reason) {
    record.m_state = ModuleState::Invalid;
    record.m_errorString = record.name() + ": " + reason;
    return ModuleStatus::error(record.m_errorString);
}

ModuleStatus ModuleLoader::load(const std::filesystem::path& path) {
    std::error_code error;
    auto record =
        std::make_unique<ModuleRecord>(std::filesystem::absolute(path, error).lexically_normal());
    if (error) return fail(*record, "cannot be found: " + error.message());
    if (!std::filesystem::is_regular_file(record->path(), error))
        return fail(*record, "no such file");
    if (isLoaded(record->path())) return fail(*record, "already loaded");

    const ModuleExports exports = readModuleExports(record->path());
    if (!exports.error.empty()) return fail(*record, exports.error);
    for (const char* name : {kEntryPointName, kApiVersionName}) {
        if (!exports.exports(name))
            return fail(*record, std::string("no entry point \"") + name + "\"");
    }
    std::string reason;
    if (!open(*record, reason)) return fail(*record, reason);
    if (!initialise(*record, reason)) {
        close(*record);
        return fail(*record, reason);
    }
    m_modules.push_back(std::move(record));
    return ModuleStatus::ok();
}

bool ModuleLoader::open(ModuleRecord& record, std::string& reason) {
    dlerror();
    record.m_handle = dlopen(record.path().c_str(), RTLD_NOW | RTLD_LOCAL);
    if (record.m_handle == nullptr) {
        reason = "cannot be loaded: " + loaderError(record.path());
        return false;
    }
    record.m_state = ModuleState::Loaded;
    record.m_image = imageOf(record.m_handle);
    record.m_entryPoint =
        reinterpret_cast<ModuleEntryPoint>(dlsym(record.m_handle, kEntryPointName));
    const auto version = reinterpret_cast<ApiVersion>(dlsym(record.m_handle, kApiVersionName));
    if (record.m_entryPoint == nullptr || version == nullptr) {
        reason = std::string("no entry point \"") +
                 (record.m_entryPoint == nullptr ? kEntryPointName : kApiVersionName) + "\"";
    } else {
        record.m_apiVersion = version();
        if (record.m_apiVersion >> 16 == kApiMajor) return true;
        reason = "made for host interface " + versionText(record.m_apiVersion) +
                 ", this host takes " + std::to_string(kApiMajor) + ".x";
    }
    // Nothing of the module has been asked to start: unmapping it is all there is to undo.
    dlclose(record.m_handle);
    record.m_handle = nullptr;
    return false;
}

bool ModuleLoader::initialise(ModuleRecord& record, std::string& reason) {
    if (send(record.m_entryPoint, AcRx::kInitAppMsg, record.appId(), reason)) {
        record.m_state = ModuleState::Running;
        return true;
    }
    reason = "refused to load (" + reason + ")";
    return false;
}

// What still points into the module after it was unmapped would be called into nothing.
void ModuleLoader::removeLeftovers(const ModuleRecord& record) {
    if (AcEdCommandStack* stack = commandStack()) {
        std::set<std::wstring> groups;
        for (const auto& command : stack->commands()) {
            if (record.contains(reinterpret_cast<const void*>(command.function)))
                groups.insert(command.group);
        }
        for (const std::wstring& group : groups) {
            stack->removeGroup(group.c_str());
            warn(record.name() + ": left the commands of group \"" + EncodeUtf8(group) +
                 "\" behind; they are removed");
        }
    }
    const auto reactors = acDocManagerPtr()->reactors();
    for (AcApDocManagerReactor* reactor : reactors) {
        if (!record.contains(reactor)) continue;
        acDocManagerPtr()->removeReactor(reactor);
        warn(record.name() + ": left a document reactor behind; it is removed");
    }
}

void ModuleLoader::close(ModuleRecord& record) {
    if (record.m_handle == nullptr) return;
    dlclose(record.m_handle);
    record.m_handle = nullptr;
    record.m_entryPoint = nullptr;
    record.m_state = ModuleState::Stopped;
    if (AcRxDynamicLinker* linker = dynamicLinker()) linker->forgetApplication(record.appId());
    // A module with unique symbols cannot be unmapped; loading it again would not start it afresh.
    if (void* still = dlopen(record.path().c_str(), RTLD_NOW | RTLD_NOLOAD)) {
        dlclose(still);
        warn(record.name() + ": stays in memory after it was unloaded");
    }
    removeLeftovers(record);
}

ModuleStatus ModuleLoader::unload(const std::string& module) {
    ModuleRecord* record = findRunning(module);
    if (record == nullptr) return ModuleStatus::error(module + ": not loaded");
    AcRxDynamicLinker* linker = dynamicLinker();
    if (linker != nullptr && linker->isApplicationLocked(record->appId()))
        return ModuleStatus::error(record->name() +
                                   ": cannot be unloaded, the module did not unlock itself");
    std::string reason;
    if (!send(record->m_entryPoint, AcRx::kUnloadAppMsg, record->appId(), reason))
        return ModuleStatus::error(record->name() + ": refused to unload (" + reason + ")");
    close(*record);
    std::erase_if(m_modules, [record](const auto& owned) { return owned.get() == record; });
    return ModuleStatus::ok();
}

ModuleRecord* ModuleLoader::findRunning(const std::string& module) const {
    std::error_code error;
    const std::filesystem::path asPath =
        std::filesystem::absolute(module, error).lexically_normal();
    const std::string key = lower(module);
    for (const auto& record : m_modules) {
        const std::string name = lower(record->name());
        if (record->path() == asPath || name == key || name == key + ".arx") return record.get();
    }
    return nullptr;
}

bool ModuleLoader::isLoaded(const std::filesystem::path& path) const {
    return std::any_of(m_modules.begin(), m_modules.end(), [&path](const auto& record) {
        std::error_code error;
        return std::filesystem::equivalent(record->path(), path, error);
    });
}

const ModuleRecord* ModuleLoader::find(const std::string& module) const {
    return findRunning(module);
}

std::vector<const ModuleRecord*> ModuleLoader::modules() const {
    std::vector<const ModuleRecord*> running;
    for (const auto& record : m_modules) running.push_back(record.get());
    return running;
}
