// The bytes of a drawing as read: a buffer of their own, or the file mapped into memory. Every view
// of a tag points into them, so they live as long as the tags.
#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

class DxfBytes {
public:
    DxfBytes() = default;
    static DxfBytes copyOf(std::string_view bytes);
    static DxfBytes ofBuffer(std::unique_ptr<char[]> buffer, std::size_t size);
    // Takes over a mapping made with mmap; it is unmapped with the bytes.
    static DxfBytes ofMapping(void* address, std::size_t size);

    DxfBytes(DxfBytes&& other) noexcept;
    DxfBytes& operator=(DxfBytes&& other) noexcept;
    DxfBytes(const DxfBytes&) = delete;
    DxfBytes& operator=(const DxfBytes&) = delete;
    ~DxfBytes();

    const char* data() const { return m_data; }
    std::size_t size() const { return m_size; }
    std::string_view view() const { return {m_data, m_size}; }

private:
    void release() noexcept;

    std::unique_ptr<char[]> m_buffer;
    void* m_mapping = nullptr;
    const char* m_data = nullptr;
    std::size_t m_size = 0;
};
