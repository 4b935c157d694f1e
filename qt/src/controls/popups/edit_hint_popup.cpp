#include "controls/popups/edit_hint_popup_p.h"

#include <QLabel>
#include <QVBoxLayout>

namespace vrn::qt::detail {

EditHintPopup::EditHintPopup(QWidget* owner)
    : PopupBase(owner)
    , m_label(new QLabel(this))
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSizeConstraint(QLayout::SetNoConstraint);
    layout->addWidget(m_label);
    m_label->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

EditHintPopup::~EditHintPopup() = default;

void EditHintPopup::setHint(const QString& hint)
{
    m_label->setText(hint);
    resize(sizeHint().boundedTo(largestSize()));
}

QSize EditHintPopup::sizeHint() const
{
    return m_label->text().isEmpty() ? QSize(0, 0) : m_label->sizeHint();
}

} // namespace vrn::qt::detail
