#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string_view>
#include <vector>

namespace lines {

/// Bytes that are written one after the other. Its memory serves the next text, too.
class Text {
public:
    [[nodiscard]] std::size_t size() const { return m_size; }
    [[nodiscard]] std::string_view view() const { return {m_bytes.data(), m_size}; }

    /// Where at most `count` further bytes may be written before `finish`.
    char* reserve(std::size_t count) {
        if (m_bytes.size() - m_size < count) {
            m_bytes.resize(std::max(m_size + count, 2 * m_bytes.size()));
        }
        return m_bytes.data() + m_size;
    }
    /// The text now ends where writing ended.
    void finish(const char* end) { m_size = static_cast<std::size_t>(end - m_bytes.data()); }

    void add(std::string_view text) {
        if (text.empty()) return;
        std::memcpy(reserve(text.size()), text.data(), text.size());
        m_size += text.size();
    }
    void add(char byte) {
        *reserve(1) = byte;
        ++m_size;
    }

    /// Keeps the first `size` bytes.
    void cut(std::size_t size) { m_size = size; }

private:
    std::vector<char> m_bytes;
    std::size_t m_size = 0;
};

}  // namespace lines
