/// @file
/// Lists of templates that stay indexed.
#pragma once

#include "Scrivo/GraphicsRecognizer.h"

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace Scrivo {

namespace detail {
class TemplateIndex;
}

/// A vector of templates with an index for matching, which `push_back` keeps up
/// to date. All else that could change an element goes through `edit()`: from
/// then on every recognition first compares the list with its index (about
/// 0.1 us a template) and does without the index when they differ. Read through
/// a const reference to avoid that.
class TemplateList {
public:
    /// What the list holds.
    using Templates = std::vector<GraphicTemplate>;

    TemplateList();
    /// A list of templates that were made elsewhere, indexed.
    TemplateList(Templates templates);
    /// A copy makes an index of its own.
    /// @{
    TemplateList(const TemplateList& other);
    TemplateList(TemplateList&& other) noexcept;
    TemplateList& operator=(const TemplateList& other);
    TemplateList& operator=(TemplateList&& other) noexcept;
    /// @}
    ~TemplateList();

    /// Adds a template to the list and to its index.
    void push_back(GraphicTemplate added);

    /// The vector, for any change.
    Templates& edit() {
        m_edited = true;
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

    /// The index of exactly these templates, or null when there is none.
    [[nodiscard]] const detail::TemplateIndex* index() const;

private:
    Templates m_templates;
    std::unique_ptr<detail::TemplateIndex> m_index;
    bool m_edited = false;
};

}  // namespace Scrivo
