#include "Scrivo/TemplateList.h"

#include "Scrivo/detail/TemplateIndex.h"

namespace Scrivo {

TemplateList::TemplateList() : m_index(std::make_unique<detail::TemplateIndex>()) {}

TemplateList::TemplateList(Templates templates) : TemplateList() {
    for (GraphicTemplate& added : templates) {
        push_back(std::move(added));
    }
}

TemplateList::TemplateList(const TemplateList& other)
    : m_templates(other.m_templates),
      m_index(std::make_unique<detail::TemplateIndex>(*other.m_index)),
      m_edited(other.m_edited) {}

TemplateList::TemplateList(TemplateList&& other) : TemplateList() {
    swap(other);
}

TemplateList& TemplateList::operator=(TemplateList other) {
    swap(other);
    return *this;
}

TemplateList::~TemplateList() = default;

void TemplateList::push_back(GraphicTemplate added) {
    // Stays edited when memory runs out half-way.
    const bool edited = std::exchange(m_edited, true);
    m_templates.push_back(std::move(added));
    m_index->append(m_templates.back().points);
    m_edited = edited;
}

void TemplateList::swap(TemplateList& other) {
    m_templates.swap(other.m_templates);
    m_index.swap(other.m_index);
    std::swap(m_edited, other.m_edited);
}

const detail::TemplateIndex* TemplateList::index() const {
    return !m_edited || m_index->describes(m_templates) ? m_index.get() : nullptr;
}

}  // namespace Scrivo
