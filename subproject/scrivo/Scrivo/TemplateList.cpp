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
      m_index(other.m_index ? std::make_unique<detail::TemplateIndex>(*other.m_index) : nullptr),
      m_edited(other.m_edited) {}

TemplateList::TemplateList(TemplateList&& other) noexcept = default;

TemplateList& TemplateList::operator=(const TemplateList& other) {
    return *this = TemplateList(other);
}

TemplateList& TemplateList::operator=(TemplateList&& other) noexcept = default;

TemplateList::~TemplateList() = default;

void TemplateList::push_back(GraphicTemplate added) {
    m_templates.push_back(std::move(added));
    if (!m_index) {
        return;
    }
    try {
        m_index->append(m_templates.back().points);
    } catch (...) {
        m_index.reset();
        throw;
    }
}

const detail::TemplateIndex* TemplateList::index() const {
    const bool isCurrent = m_index && (!m_edited || m_index->describes(m_templates));
    return isCurrent ? m_index.get() : nullptr;
}

}  // namespace Scrivo
