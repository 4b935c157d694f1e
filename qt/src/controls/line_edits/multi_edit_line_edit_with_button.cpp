#include <vrn/qt/multi_edit_line_edit_with_button.h>

#include <vrn/assert/smart_assert.h>
#include <vrn/companion_qt/connect.h>

#include <QToolButton>

#include "controls/parts/alive_p.h"
#include "controls/parts/append_tool_button_p.h"

#include <utility>

namespace vrn::qt {

MultiEditLineEditWithButton::MultiEditLineEditWithButton(IValidator* validator, int id)
    : MultiEditLineEdit(
        nullptr, QString(), boost::shared_ptr<IValidator>(validator), {}, 0, ExpandHorizontal)
    , m_btn(detail::appendToolButton(this, QStringLiteral("m_btn")))
    , m_id(id)
{}

MultiEditLineEditWithButton::MultiEditLineEditWithButton(
    IValidator* validator, int id, std::function<void(int)> fn)
    : MultiEditLineEditWithButton(validator, id)
{
    vrn_connect(m_btn, &QToolButton::clicked, this, [this, fn = std::move(fn)] {
        VRN_ASSERT(fn);
        const detail::Alive alive(this, m_btn);
        if (const auto call = fn)
            call(m_id);
    });
}

MultiEditLineEditWithButton::MultiEditLineEditWithButton(
    IValidator* validator, int id, std::function<void(QWidget*, int, boost::any&)> fn)
    : MultiEditLineEditWithButton(validator, id)
{
    vrn_connect(m_btn, &QToolButton::clicked, this, [this, fn = std::move(fn)] {
        VRN_ASSERT(fn);
        const auto call = fn;
        if (!call)
            return;
        const detail::Alive alive(this, m_btn);
        boost::any value;
        call(this, m_id, value);
        if (alive)
            setValue(value);
    });
}

MultiEditLineEditWithButton::~MultiEditLineEditWithButton()
{
    detail::disposeOf(m_btn);
}

} // namespace vrn::qt
