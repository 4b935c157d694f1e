#include <vrn/qt/simple_line_edit.h>

#include <vrn/assert/smart_assert.h>
#include <vrn/companion_qt/connect.h>
#include <vrn/companion_qt/label.h>
#include <vrn/companion_qt/push_button.h>
#include <vrn/qt/forward_validator.h>
#include <vrn/qt/varies_string.h>

#include <boost/make_shared.hpp>

#include <QBoxLayout>
#include <QColor>
#include <QFocusEvent>
#include <QPainter>
#include <QPixmap>
#include <QStyleOptionButton>

#include "controls/line_edits/line_edit_impl_p.h"
#include "controls/parts/alive_p.h"
#include "controls/parts/mnemonic_p.h"
#include "controls/parts/no_flags_p.h"
#include "controls/parts/readable_colours_p.h"
#include "controls/parts/run_both_p.h"
#include "controls/parts/spare_p.h"

#include <algorithm>
#include <initializer_list>
#include <utility>

namespace vrn::qt {
namespace {

using detail::noFlags;

// The options go to the edit as they are.
static_assert(SimpleLineEdit::OptionBorderless == detail::LineEditImpl::optionBorderless);

const QString& styleOfValidity(bool valid)
{
    static const QString pattern = QStringLiteral("QLineEdit { color: %1; }");
    static const QString black = pattern.arg(QStringLiteral("#000"));
    static const QString red = pattern.arg(QColor(230, 20, 20).name());
    return valid ? black : red;
}

QBoxLayout* createLayout(QWidget* parent, ExpandDirection direction)
{
    if (direction == ExpandHorizontal)
        return new QHBoxLayout(parent);
    return new QVBoxLayout(parent);
}

} // namespace

SimpleLineEdit* SimpleLineEdit::create(QWidget* parent, const QString& caption,
    IValidator* validator, unsigned int options, ExpandDirection direction)
{
    return create(parent, caption, boost::shared_ptr<IValidator>(validator), options, direction);
}

SimpleLineEdit* SimpleLineEdit::create(QWidget* parent, const QString& caption,
    boost::shared_ptr<IValidator> validator, unsigned int options, ExpandDirection direction)
{
    return create(parent, caption, std::move(validator), {}, options, direction);
}

SimpleLineEdit* SimpleLineEdit::create(QWidget* parent, const QString& caption,
    boost::shared_ptr<IValidator> validator, boost::function<void()> buttonFn, unsigned int options,
    ExpandDirection direction)
{
    return new SimpleLineEdit(
        parent, caption, std::move(validator), std::move(buttonFn), options, direction);
}

SimpleLineEdit::SimpleLineEdit(QWidget* parent, const QString& caption,
    boost::shared_ptr<IValidator> validator, boost::function<void()> buttonFn, unsigned int options,
    ExpandDirection direction)
    : QWidget(parent)
    , m_lineEdit(new detail::LineEditImpl(options))
    , m_validator(std::move(validator))
    , m_layout(createLayout(this, direction))
    , m_unitString(new VRN_QT_Label)
    , m_buttonFunction(std::move(buttonFn))
{
    m_layout->setContentsMargins(2, 2, 2, 2);

    if (!caption.isEmpty()) {
        m_caption = new VRN_QT_Label(caption);
        m_caption->setBuddy(m_lineEdit);
        m_lineEdit->setAccessibleName(detail::withoutMnemonic(caption));
        m_layout->addWidget(m_caption);
    }

    setFocusProxy(m_lineEdit);
    // The shortcut of an application's own caption skips a widget without a focus policy.
    setFocusPolicy(m_lineEdit->focusPolicy());
    if ((options & OptionBorderless) != 0) {
        m_lineEdit->setLook(QStringLiteral("QLineEdit { border:0; background-color:white; }"));
        setStyleSheet(QStringLiteral("* { background-color:white; }"));
    }
    m_layout->addWidget(m_lineEdit);
    vrn_connect(edit(), &QLineEdit::editingFinished, this, &SimpleLineEdit::onEditingFinished);
    vrn_connect(edit(), &QLineEdit::textEdited, this, &SimpleLineEdit::onTextEdited);

    m_layout->addWidget(m_unitString);
    m_unitString->hide();

    if (m_buttonFunction) {
        m_button = new VRN_QT_PushButton(QStringLiteral("..."));
        m_button->setFixedSize(20, 20);
        vrn_connect(m_button, &QPushButton::clicked, this, &SimpleLineEdit::onClickedButton);
        m_layout->addWidget(m_button);
    }

    for (QWidget* part : std::initializer_list<QWidget*>{m_caption, m_unitString, m_button}) {
        if (part && (options & OptionBorderless) != 0)
            new detail::ReadableColours(part, this);
    }
}

SimpleLineEdit::~SimpleLineEdit()
{
    detail::disposeOf(m_button);
    if (isAncestorOf(m_lineEdit))
        detail::disposeOf(m_lineEdit);
    else if (m_lineEdit) // A combo box has it.
        m_lineEdit->disconnect(this);
}

IValidator& SimpleLineEdit::validator() const
{
    return *heldValidator();
}

boost::shared_ptr<IValidator> SimpleLineEdit::heldValidator() const
{
    VRN_ASSERT(m_validator);
    if (m_validator)
        return m_validator;
    static const auto refusing = boost::make_shared<ForwardValidator>(nullptr);
    return refusing;
}

detail::LineEditImpl& SimpleLineEdit::lineEdit() const
{
    VRN_ASSERT(m_lineEdit);
    return m_lineEdit ? *m_lineEdit : detail::spare<detail::LineEditImpl>(0U);
}

QLineEdit* SimpleLineEdit::edit()
{
    return &lineEdit();
}

const QLineEdit* SimpleLineEdit::edit() const
{
    return &lineEdit();
}

bool SimpleLineEdit::isEdit(const QObject* object) const
{
    return object == m_lineEdit;
}

boost::any SimpleLineEdit::getValue() const
{
    boost::any value;
    const bool ok = heldValidator()->validateWhenFinished(lineEdit().text(), value, noFlags);
    VRN_ASSERT_MESSAGE(ok, "getValue() failed to validate");
    return value;
}

void SimpleLineEdit::setValue(const boost::any& value)
{
    const detail::Alive alive(this, m_lineEdit);
    const auto validator = heldValidator();
    m_valueValid = false; // Even if the validator throws.
    QString text;
    try {
        text = validator->reformat(value, noFlags);
    } catch (...) {
        // The text of the old value would be taken for that of the new one.
        if (alive)
            lineEdit().clear();
        throw;
    }
    if (alive)
        lineEdit().setText(text);
    if (!alive)
        return;
    boost::any scratch;
    const bool valid = validator->validate(lineEdit().text(), scratch, noFlags);
    if (alive)
        m_valueValid = valid;
}

bool SimpleLineEdit::vetoValidation(const QString& /*text*/)
{
    return false;
}

void SimpleLineEdit::onValidated(const QString& /*text*/, const boost::any& /*value*/) {}

void SimpleLineEdit::onTextEdited(const QString& text)
{
    if (validateTyped(text))
        showHint(text);
}

// Returns whether there is a hint to show for `text`.
bool SimpleLineEdit::validateTyped(const QString& text)
{
    if (!m_validator) {
        m_valueValid = true;
        return false;
    }
    const detail::Alive alive(this, m_lineEdit);
    const auto validator = m_validator;
    if (vetoValidation(text) || !alive)
        return false;
    refuseIfThrown([&] {
        boost::any value;
        const bool valid = validator->validate(text, value, noFlags);
        if (!alive)
            return;
        m_valueValid = valid;
        if (valid)
            onValidated(text, value);
    });
    if (alive)
        showValidity();
    return static_cast<bool>(alive);
}

void SimpleLineEdit::onEditingFinished()
{
    const detail::Alive alive(this, m_lineEdit);
    const QString text = lineEdit().text();
    const bool hasHint = validateTyped(text);
    detail::runBoth(
        [&] {
            if (hasHint)
                showHint(text);
        },
        [&] {
            if (alive)
                finishEditing(text);
        });
}

void SimpleLineEdit::finishEditing(const QString& text)
{
    const detail::Alive alive(this, m_lineEdit);
    if (vetoValidation(text) || !alive)
        return;
    refuseIfThrown([&] {
        const auto validator = heldValidator();
        boost::any value;
        const bool valid = validator->validateWhenFinished(text, value, noFlags);
        if (!alive)
            return;
        m_valueValid = valid;
        if (!valid)
            return;
        onValidated(text, value);
        const QString rewritten = validator->reformat(value, noFlags);
        if (alive)
            lineEdit().setText(rewritten);
    });
    if (alive)
        Q_EMIT valueChanged();
}

void SimpleLineEdit::showHint(const QString& text)
{
    const detail::Alive alive(this);
    const auto validator = m_validator;
    const QString hint = validator->getEditHint(text);
    if (alive)
        lineEdit().showEditHint(hint);
}

// Runs a step of the validation. An exception passes to the caller and leaves a refused
// text.
template <typename Function>
void SimpleLineEdit::refuseIfThrown(Function step)
{
    const detail::Alive alive(this);
    try {
        step();
    } catch (...) {
        if (alive) {
            m_valueValid = false;
            showValidity();
        }
        throw;
    }
}

void SimpleLineEdit::showValidity()
{
    // Qt polishes the edit again even if the style sheet is the same.
    const QString& style = styleOfValidity(m_valueValid);
    if (lineEdit().styleSheet() != style)
        lineEdit().setLook(style);
}

QToolButton* SimpleLineEdit::addButton(
    const boost::function<QString(const QString&)>& fn, const QPixmap& pixmap)
{
    return lineEdit().addButton(fn, pixmap);
}

void SimpleLineEdit::setCompletions(std::function<QStringList(const QString&)> completions)
{
    lineEdit().setCompletions(std::move(completions));
}

void SimpleLineEdit::setValueHistory(boost::shared_ptr<vrn::ValueHistory> history)
{
    m_valueHistory = std::move(history);
    lineEdit().setValueHistory(m_valueHistory);
}

void SimpleLineEdit::addCurrentValueToValueHistory()
{
    VRN_ASSERT(m_validator);
    const QString text = lineEdit().text();
    const auto history = m_valueHistory; // A storage may replace it.
    if (history && !text.isEmpty() && text != getVariesString())
        history->add(text.toStdWString());
}

void SimpleLineEdit::setUnitString(const QString& unit)
{
    VRN_ASSERT(m_unitString);
    m_unitString->setHidden(unit.isEmpty());
    // A hidden label keeps its text, and sizeHint() goes on counting its width.
    if (!unit.isEmpty())
        m_unitString->setText(QLatin1Char('[') + unit + QLatin1Char(']'));
}

void SimpleLineEdit::setMinimumWidthFactor(double factor)
{
    m_widthFactor = factor < 0.01 || std::min(factor, 100.0) != 0.0;
}

void SimpleLineEdit::setEditMaximumWidth(int width)
{
    lineEdit().setMaximumWidth(width);
}

void SimpleLineEdit::setMaxLength(int length)
{
    const detail::Alive alive(this, m_lineEdit);
    lineEdit().setMaxLength(length);
}

void SimpleLineEdit::setReadOnly(bool readOnly)
{
    lineEdit().setReadOnly(readOnly);
}

void SimpleLineEdit::setAlignment(Qt::Alignment alignment)
{
    lineEdit().setAlignment(alignment);
}

void SimpleLineEdit::selectAll()
{
    lineEdit().selectAll();
}

QSize SimpleLineEdit::sizeHint() const
{
    return sizeFromParts(&QWidget::sizeHint);
}

QSize SimpleLineEdit::minimumSizeHint() const
{
    return sizeFromParts(&QWidget::minimumSizeHint);
}

QSize SimpleLineEdit::sizeFromParts(SizeFunction sizeOf) const
{
    const QSize edit = (lineEdit().*sizeOf)();
    const int factor = m_widthFactor ? 1 : 0;
    int width = static_cast<int>(factor * (edit.width() * 0.6));
    if (!m_unitString->text().isEmpty())
        width += (m_unitString->*sizeOf)().width();
    if (m_caption)
        width += (m_caption->*sizeOf)().width();
    return QSize(width + 12, edit.height());
}

void SimpleLineEdit::focusInEvent(QFocusEvent* event)
{
    QWidget::focusInEvent(event);
    lineEdit().setFocus(Qt::OtherFocusReason);
}

void SimpleLineEdit::focusOutEvent(QFocusEvent* event)
{
    QWidget::focusOutEvent(event);
}

void SimpleLineEdit::paintEvent(QPaintEvent* event)
{
    QWidget::paintEvent(event);
    if (!m_buttonFunction)
        return;
    QStyleOptionButton option;
    option.palette = lineEdit().palette();
    option.rect = lineEdit().geometry();
    option.rect.setLeft(option.rect.right() - 20);
    option.text = QStringLiteral("...");
    QPainter painter(this);
    style()->drawControl(QStyle::CE_PushButton, &option, &painter, this);
    style()->drawControl(QStyle::CE_PushButtonLabel, &option, &painter, this);
}

void SimpleLineEdit::onClickedButton()
{
    const detail::Alive alive(this, m_button);
    const auto fn = m_buttonFunction;
    if (fn)
        fn();
}

} // namespace vrn::qt
