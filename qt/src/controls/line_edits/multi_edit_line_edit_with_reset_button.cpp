#include <vrn/qt/multi_edit_line_edit_with_reset_button.h>

#include <vrn/assert/smart_assert.h>
#include <vrn/companion_qt/connect.h>
#include <vrn/qt/pixmap.h>

#include <QIcon>
#include <QLineEdit>
#include <QToolButton>

#include "controls/parts/alive_p.h"
#include "controls/parts/append_tool_button_p.h"

#include <utility>

namespace vrn::qt {

MultiEditLineEditWithResetButton::MultiEditLineEditWithResetButton(
    IValidator* validator, int id, std::function<void(int, boost::any&, boost::any&)> fn)
    : MultiEditLineEdit(
        nullptr, QString(), boost::shared_ptr<IValidator>(validator), {}, 0, ExpandHorizontal)
    , m_id(id)
{
    m_button = detail::appendToolButton(this, QStringLiteral("btn"));
    m_button->setIcon(Pixmap::createOrDefault(L"control_repeat_blue.png"));
    m_button->setToolTip(QObject::tr("Reset to default.", "makeLineEditWithOptionalValue"));
    m_button->setAccessibleName(m_button->toolTip());

    // Before the validation: if that throws, later slots do not run.
    disconnect(edit(), &QLineEdit::textEdited, this, &SimpleLineEdit::onTextEdited);
    vrn_connect(edit(), &QLineEdit::textEdited, this, [this] { m_resetPending = false; });
    vrn_connect(edit(), &QLineEdit::textEdited, this, &SimpleLineEdit::onTextEdited);
    vrn_connect(m_button, &QToolButton::clicked, this, [this, fn = std::move(fn)] {
        VRN_ASSERT(fn);
        const auto call = fn;
        if (!call)
            return;
        const detail::Alive alive(this, m_button);
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

MultiEditLineEditWithResetButton::~MultiEditLineEditWithResetButton()
{
    detail::disposeOf(m_button);
}

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
