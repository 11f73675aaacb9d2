// A short list searched in order: drawings hold a few dozen types at most.
#include "host/desktop/scene/sceneentitytypes.h"

#include <algorithm>
#include <cctype>

namespace {

bool sameIgnoringCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
        return std::toupper(static_cast<unsigned char>(x)) ==
               std::toupper(static_cast<unsigned char>(y));
    });
}

}  // namespace

std::uint16_t SceneEntityTypes::intern(std::string_view type) {
    const std::lock_guard lock(m_mutex);
    if (const auto known = findLocked(type)) return *known;
    std::string name(type);
    for (char& c : name) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    m_names.push_back(std::move(name));
    return static_cast<std::uint16_t>(m_names.size() - 1);
}

std::optional<std::uint16_t> SceneEntityTypes::find(std::string_view type) const {
    const std::lock_guard lock(m_mutex);
    return findLocked(type);
}

std::optional<std::uint16_t> SceneEntityTypes::findLocked(std::string_view type) const {
    for (std::size_t i = 0; i < m_names.size(); ++i) {
        if (sameIgnoringCase(m_names[i], type)) return static_cast<std::uint16_t>(i);
    }
    return std::nullopt;
}

const std::string& SceneEntityTypes::name(std::uint16_t number) const {
    const std::lock_guard lock(m_mutex);
    return m_names[number];
}

std::size_t SceneEntityTypes::size() const {
    const std::lock_guard lock(m_mutex);
    return m_names.size();
}
