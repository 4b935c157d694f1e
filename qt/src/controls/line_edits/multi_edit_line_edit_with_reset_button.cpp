#include <vrn/qt/multi_edit_line_edit_with_reset_button.h>

#include <vrn/assert/smart_assert.h>
#include <vrn/companion_qt/connect.h>
#include <vrn/qt/pixmap.h>

#include <QIcon>
#include <QLineEdit>
#include <QPointer>
#include <QToolButton>

#include "controls/parts/append_tool_button_p.h"

#include <utility>

namespace vrn::qt {

MultiEditLineEditWithResetButton::MultiEditLineEditWithResetButton(
    IValidator* validator, int id, std::function<void(int, boost::any&, boost::any&)> fn)
    : MultiEditLineEdit(
        nullptr, QString(), boost::shared_ptr<IValidator>(validator), {}, 0, ExpandHorizontal)
    , m_id(id)
{
    QToolButton* button = detail::appendToolButton(this, QStringLiteral("btn"));
    button->setIcon(Pixmap::createOrDefault(L"control_repeat_blue.png"));
    button->setToolTip(QObject::tr("Reset to default.", "makeLineEditWithOptionalValue"));
    button->setAccessibleName(button->toolTip());

    // Ahead of the validation: what that throws keeps the text from whoever comes behind it.
    disconnect(edit(), &QLineEdit::textEdited, this, &SimpleLineEdit::onTextEdited);
    vrn_connect(edit(), &QLineEdit::textEdited, this, [this] { m_resetPending = false; });
    vrn_connect(edit(), &QLineEdit::textEdited, this, &SimpleLineEdit::onTextEdited);
    vrn_connect(button, &QToolButton::clicked, this, [this, fn = std::move(fn)] {
        VRN_ASSERT(fn);
        // A copy: the function may destroy this control, and itself with it.
        const auto call = fn;
        if (!call)
            return;
        const QPointer<MultiEditLineEditWithResetButton> alive(this);
        boost::any shown;
        boost::any reported;
        call(m_id, shown, reported);
        if (!alive)
            return;
        m_resetPending = true;
        m_resetValue = reported;
        setValue(shown);
        if (alive)
            Q_EMIT valueChanged();
    });
}

MultiEditLineEditWithResetButton::~MultiEditLineEditWithResetButton() = default;

void MultiEditLineEditWithResetButton::setValue(const boost::any& value)
{
    try {
        MultiEditLineEdit::setValue(value);
    } catch (...) {
        m_resetPending = false;
        throw;
    }
}

boost::any MultiEditLineEditWithResetButton::getCurrentValue() const
{
    if (dataVaries())
        return boost::any();
    return m_resetPending ? m_resetValue : MultiEditLineEdit::getCurrentValue();
}

} // namespace vrn::qt
