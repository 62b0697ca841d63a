/// @file
/// The recogniser's lists of templates.
#pragma once

#include "Scrivo/GraphicsRecognizer.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>
#include <vector>

namespace Scrivo {

class TemplatesGraphicsRecognizer;

/// A vector of templates that remembers whether its elements may have been
/// changed. Once a mutable reference to an element has been handed out, every
/// recognition first compares the list with what was indexed (about 0.2 us a
/// template) and rebuilds the index when they differ, during which loads and other
/// recognitions wait. Read through a const reference to avoid that.
class TemplateList {
public:
    /// What the list holds.
    using Templates = std::vector<GraphicTemplate>;

    TemplateList() = default;
    /// A list of templates that were made elsewhere.
    TemplateList(Templates templates) : m_templates(std::move(templates)), m_isExposed(true) {}
    /// As of a vector.
    /// @{
    TemplateList(const TemplateList& other) = default;
    TemplateList(TemplateList&& other) noexcept
        : m_templates(std::move(other.m_templates)),
          m_isExposed(std::exchange(other.m_isExposed, true)) {}
    TemplateList& operator=(const TemplateList& other) { return *this = TemplateList(other); }
    TemplateList& operator=(TemplateList&& other) noexcept {
        m_templates.swap(other.m_templates);
        m_isExposed = other.m_isExposed = true;
        return *this;
    }
    ~TemplateList() = default;
    /// @}

    /// Whether an element may have been changed other than by the recogniser.
    [[nodiscard]] bool isExposed() const { return m_isExposed; }

    /// The vector, for any change.
    Templates& edit() {
        m_isExposed = true;
        return m_templates;
    }
    /// The vector, to be changed or to be read only.
    /// @{
    operator Templates&() { return edit(); }
    operator const Templates&() const { return m_templates; }
    /// @}

    /// As of a vector, to read.
    /// @{
    [[nodiscard]] std::size_t size() const { return m_templates.size(); }
    [[nodiscard]] bool empty() const { return m_templates.empty(); }

    const GraphicTemplate& operator[](std::size_t k) const { return m_templates[k]; }
    [[nodiscard]] const GraphicTemplate& at(std::size_t k) const { return m_templates.at(k); }
    [[nodiscard]] const GraphicTemplate& front() const { return m_templates.front(); }
    [[nodiscard]] const GraphicTemplate& back() const { return m_templates.back(); }
    [[nodiscard]] auto begin() const { return m_templates.begin(); }
    [[nodiscard]] auto end() const { return m_templates.end(); }
    /// @}

    /// As of a vector, to change it: see `edit()`.
    /// @{
    GraphicTemplate& operator[](std::size_t k) { return edit()[k]; }
    GraphicTemplate& at(std::size_t k) { return edit().at(k); }
    GraphicTemplate& front() { return edit().front(); }
    GraphicTemplate& back() { return edit().back(); }
    auto begin() { return edit().begin(); }
    auto end() { return edit().end(); }

    void push_back(GraphicTemplate added) { edit().push_back(std::move(added)); }
    void clear() { edit().clear(); }
    void pop_back() { edit().pop_back(); }
    void resize(std::size_t size) { edit().resize(size); }
    void reserve(std::size_t capacity) { m_templates.reserve(capacity); }
    template <typename... Arguments>
    auto erase(Arguments&&... arguments) {
        return edit().erase(std::forward<Arguments>(arguments)...);
    }
    template <typename... Arguments>
    auto insert(Arguments&&... arguments) {
        return edit().insert(std::forward<Arguments>(arguments)...);
    }
    /// @}

private:
    friend class TemplatesGraphicsRecognizer;

    /// Makes room for `count` more templates, so that `append` cannot fail.
    void reserveMore(std::size_t count) {
        const std::size_t needed = m_templates.size() + count;
        if (needed > m_templates.capacity()) {
            // In parentheses because <windows.h> defines a macro of this name.
            m_templates.reserve((std::max)(needed, 2 * m_templates.capacity()));
        }
    }
    void append(Templates&& added) noexcept {
        std::move(added.begin(), added.end(), std::back_inserter(m_templates));
    }

    Templates m_templates;
    bool m_isExposed = false;
};

}  // namespace Scrivo
