// The DXF type names (LINE, INSERT, ...) of the scene's entities, each kept once and numbered, so
// that an entity carries a small number and a selection filter compares numbers. Readers on
// several threads may add names at once.
#pragma once

#include <cstdint>
#include <deque>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

class SceneEntityTypes {
public:
    // Names are kept in upper case: "Line" and "LINE" are one type.
    std::uint16_t intern(std::string_view type);
    // The number of a type name, found without regard to case; none when no entity has it.
    std::optional<std::uint16_t> find(std::string_view type) const;
    const std::string& name(std::uint16_t number) const;
    std::size_t size() const;

private:
    std::optional<std::uint16_t> findLocked(std::string_view type) const;

    mutable std::mutex m_mutex;
    std::deque<std::string> m_names;  // a deque keeps the names where they are as it grows
};
