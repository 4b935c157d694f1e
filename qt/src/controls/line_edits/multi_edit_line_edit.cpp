#include <vrn/qt/multi_edit_line_edit.h>

#include <vrn/companion_qt/connect.h>
#include <vrn/companion_qt/signal_blocker.h>
#include <vrn/qt/varies_string.h>
#include <vrn/units/i_converter.h>

#include <QEvent>
#include <QLineEdit>

#include "controls/parts/alive_p.h"
#include "controls/parts/no_flags_p.h"
#include "controls/selection/varies_tool_tip_p.h"

#include <cmath>
#include <string>
#include <utility>

namespace vrn::qt {
namespace {

using detail::noFlags;
using ValueComparison = bool (*)(const boost::any&, const boost::any&);

// 0 and -0 are written differently.
bool isIdentical(double a, double b)
{
    return a == b && std::signbit(a) == std::signbit(b);
}

bool isIdentical(
    const vrn::units::IConverter::quantity& a, const vrn::units::IConverter::quantity& b)
{
    return a.unit_id == b.unit_id && isIdentical(a.value, b.value);
}

template <typename T>
bool isIdentical(const T& a, const T& b)
{
    return a == b;
}

template <typename T>
bool areIdentical(const boost::any& a, const boost::any& b)
{
    const T* left = boost::any_cast<T>(&a);
    const T* right = boost::any_cast<T>(&b);
    return left && right && isIdentical(*left, *right);
}

template <typename... T>
ValueComparison comparisonAmong(const boost::any& value)
{
    ValueComparison comparison = nullptr;
    ((boost::any_cast<T>(&value) ? void(comparison = &areIdentical<T>) : void()), ...);
    return comparison;
}

// Null for a type that no validator of the library gives.
ValueComparison comparisonOf(const boost::any& value)
{
    return comparisonAmong<vrn::units::IConverter::quantity, double, int, unsigned int,
        unsigned short, std::wstring, std::string>(value);
}

} // namespace

MultiEditLineEdit* MultiEditLineEdit::create(QWidget* parent, const QString& caption,
    IValidator* validator, unsigned int options, ExpandDirection direction)
{
    return create(parent, caption, boost::shared_ptr<IValidator>(validator), options, direction);
}

MultiEditLineEdit* MultiEditLineEdit::create(QWidget* parent, const QString& caption,
    boost::shared_ptr<IValidator> validator, unsigned int options, ExpandDirection direction)
{
    return create(parent, caption, std::move(validator), {}, options, direction);
}

MultiEditLineEdit* MultiEditLineEdit::create(QWidget* parent, const QString& caption,
    boost::shared_ptr<IValidator> validator, boost::function<void()> buttonFn, unsigned int options,
    ExpandDirection direction)
{
    return new MultiEditLineEdit(
        parent, caption, std::move(validator), std::move(buttonFn), options, direction);
}

MultiEditLineEdit::MultiEditLineEdit(QWidget* parent, const QString& caption,
    boost::shared_ptr<IValidator> validator, boost::function<void()> buttonFn, unsigned int options,
    ExpandDirection direction)
    : SimpleLineEdit(parent, caption, std::move(validator), std::move(buttonFn), options, direction)
{
    vrn_connect(edit(), &QLineEdit::textChanged, this, [this] { m_isLikeShown = nullptr; });
    vrn_connect(edit(), &QLineEdit::textEdited, this, [this](const QString& text) {
        if (!isVariesText(text))
            return;
        m_varies = true;
        m_variesText = text;
    });
    edit()->installEventFilter(this);
    new detail::VariesToolTip(this);
}

MultiEditLineEdit::~MultiEditLineEdit() = default;

void MultiEditLineEdit::reset()
{
    m_varies = false;
    m_fresh = true;
}

void MultiEditLineEdit::readValue(const boost::any& value)
{
    if (m_fresh) {
        m_fresh = false;
        m_varies = false;
        setValue(value);
        return;
    }
    if (m_varies)
        return;
    // Formatting is what takes time in a large selection, and most values there are equal to
    // the one before.
    if (m_isLikeShown && m_isLikeShown(value, m_shownValue))
        return;
    const detail::Alive alive(this);
    QString text;
    try {
        text = heldValidator()->reformat(value, noFlags);
    } catch (...) {
        if (alive)
            forceVaries();
        throw;
    }
    if (!alive)
        return;
    if (edit()->text() != asShown(text)) {
        forceVaries();
        return;
    }
    m_shownValue = value;
    m_isLikeShown = comparisonOf(value);
}

boost::any MultiEditLineEdit::getCurrentValue() const
{
    if (m_varies || !isValueValid())
        return boost::any();
    return getValue();
}

void MultiEditLineEdit::setValue(const boost::any& value)
{
    const VRN_QT_SignalBlocker blocker(isLoading() ? this : nullptr);
    m_varies = false;
    m_variesText.clear();
    m_isLikeShown = nullptr;
    SimpleLineEdit::setValue(value);
}

void MultiEditLineEdit::forceVaries()
{
    const detail::Alive alive(this, edit());
    m_varies = true;
    const QString text = getVariesString(); // QLineEdit reads it again after its signals.
    m_variesText = text;
    edit()->setText(text);
}

void MultiEditLineEdit::copyStateFrom(const MultiEditLineEdit& other)
{
    const detail::Alive alive(this, edit());
    edit()->setText(other.edit()->text());
    if (!alive)
        return;
    m_fresh = other.m_fresh;
    m_varies = other.m_varies;
    m_variesText = other.m_variesText;
}

bool MultiEditLineEdit::vetoValidation(const QString& text)
{
    return isVariesText(text);
}

bool MultiEditLineEdit::isVariesText(const QString& text) const
{
    return text == getVariesString() || (!m_variesText.isEmpty() && text == asShown(m_variesText));
}

QString MultiEditLineEdit::asShown(const QString& text) const
{
    return text.left(edit()->maxLength());
}

void MultiEditLineEdit::onValidated(const QString& /*text*/, const boost::any& /*value*/)
{
    m_varies = false;
}

bool MultiEditLineEdit::eventFilter(QObject* watched, QEvent* event)
{
    // The text is read for these events only: an edit that is being destroyed no longer
    // has one.
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
        if (!isEdit(watched) || !isVariesText(edit()->text()))
            break;
        // The user has no use for a position in this text or a part of it.
        if (event->type() != QEvent::MouseMove)
            edit()->selectAll();
        return true;
    case QEvent::LanguageChange:
        if (isEdit(watched) && m_varies && isVariesText(edit()->text()))
            translateVariesText();
        break;
    default:
        break;
    }
    return SimpleLineEdit::eventFilter(watched, event);
}

void MultiEditLineEdit::translateVariesText()
{
    const bool isSelected = edit()->hasSelectedText();
    MultiEditLineEdit::forceVaries();
    if (isSelected)
        selectAll();
}

} // namespace vrn::qt
