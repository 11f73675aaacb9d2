// Owning a drawing's bytes, in memory of our own or mapped from the file.
#include "host/dxf/dxfbytes.h"

#include <sys/mman.h>

#include <cstring>
#include <utility>

DxfBytes DxfBytes::copyOf(std::string_view bytes) {
    // Exactly as long as the bytes, so that a reader going past their end is caught by the
    // sanitizers rather than by a spare byte.
    auto buffer = std::make_unique_for_overwrite<char[]>(bytes.size());
    if (!bytes.empty()) std::memcpy(buffer.get(), bytes.data(), bytes.size());
    return ofBuffer(std::move(buffer), bytes.size());
}

DxfBytes DxfBytes::ofBuffer(std::unique_ptr<char[]> buffer, std::size_t size) {
    DxfBytes bytes;
    bytes.m_data = buffer.get();
    bytes.m_buffer = std::move(buffer);
    bytes.m_size = size;
    return bytes;
}

DxfBytes DxfBytes::ofMapping(void* address, std::size_t size) {
    DxfBytes bytes;
    bytes.m_mapping = address;
    bytes.m_data = static_cast<const char*>(address);
    bytes.m_size = size;
    return bytes;
}

DxfBytes::DxfBytes(DxfBytes&& other) noexcept
    : m_buffer(std::move(other.m_buffer)),
      m_mapping(std::exchange(other.m_mapping, nullptr)),
      m_data(std::exchange(other.m_data, nullptr)),
      m_size(std::exchange(other.m_size, 0)) {}

DxfBytes& DxfBytes::operator=(DxfBytes&& other) noexcept {
    if (this != &other) {
        release();
        m_buffer = std::move(other.m_buffer);
        m_mapping = std::exchange(other.m_mapping, nullptr);
        m_data = std::exchange(other.m_data, nullptr);
        m_size = std::exchange(other.m_size, 0);
    }
    return *this;
}

DxfBytes::~DxfBytes() { release(); }

void DxfBytes::release() noexcept {
    if (m_mapping != nullptr) ::munmap(m_mapping, m_size);
    m_mapping = nullptr;
    m_buffer.reset();
    m_data = nullptr;
    m_size = 0;
}
