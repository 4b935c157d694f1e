#include <vrn/qt/toolbar.h>

#include <vrn/assert/smart_assert.h>
#include <vrn/companion_qt/box_layout.h>
#include <vrn/companion_qt/connect.h>
#include <vrn/qt/push_buttons.h>

#include <QIcon>
#include <QLabel>
#include <QMessageBox>
#include <QPixmap>
#include <QPointer>
#include <QPushButton>

#include "controls/parts/alive_p.h"

#include <exception>
#include <utility>
#include <vector>

namespace vrn::qt {
namespace {

QBoxLayout* createBarLayout(QWidget* parent, ExpandDirection direction)
{
    if (direction == ExpandHorizontal)
        return new VRN_QT_HBoxLayout(parent, nullptr);
    return new VRN_QT_VBoxLayout(parent, nullptr);
}

// Warns as QMessageBox::warning() does. That keeps the box on the stack as a child of `parent`,
// which may be destroyed while the box is open.
void warn(QWidget* parent, const QString& text)
{
    const QPointer<QMessageBox> box(new QMessageBox(QMessageBox::Warning,
        QStringLiteral("Varnelik: Exception"), text, QMessageBox::Ok, parent));
    // The "<int>" of a message is not markup.
    box->setTextFormat(Qt::PlainText);
    box->exec();
    delete box;
}

} // namespace

Toolbar::Toolbar(QWidget* parent, ExpandDirection direction)
    : QWidget(parent)
    , m_layout(createBarLayout(this, direction))
{
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(0);
    m_layout->setAlignment(Qt::AlignLeft | Qt::AlignTop);
}

Toolbar::~Toolbar()
{
    disposeOfButtons([this](const QPushButton& button) { return isAncestorOf(&button); });
}

QPushButton* Toolbar::addButton(const std::string& id, const QIcon& icon, const QString& toolTip,
    boost::function<void()> fn, unsigned int mask)
{
    return addButtonWithIcon(id, icon, toolTip, std::move(fn), mask);
}

QPushButton* Toolbar::addButton(const std::string& id, const QPixmap& icon, const QString& toolTip,
    boost::function<void()> fn, unsigned int mask)
{
    return addButtonWithIcon(id, QIcon(icon), toolTip, std::move(fn), mask);
}

QPushButton* Toolbar::addButtonWithIcon(const std::string& id, const QIcon& icon,
    const QString& toolTip, boost::function<void()> fn, unsigned int mask)
{
    return registerButton(
        createPushButtonWithIcon(this, icon, id.c_str()), toolTip, std::move(fn), mask);
}

QPushButton* Toolbar::addButtonWithIconAndText(const std::string& id, const QIcon& icon,
    const QString& text, const QString& toolTip, boost::function<void()> fn, unsigned int mask)
{
    return registerButton(createPushButtonWithIconAndText(this, icon, text, id.c_str()), toolTip,
        std::move(fn), mask);
}

QPushButton* Toolbar::addButtonWithText(const std::string& id, const QString& text,
    const QString& toolTip, boost::function<void()> fn, unsigned int mask)
{
    auto* button = new QPushButton(text, this);
    button->setObjectName(QString::fromStdString(id));
    button->setAutoDefault(false);
    const int height = button->sizeHint().height();
    button->setFixedHeight(height);
    if (text.length() == 1)
        button->setFixedWidth(height);
    return registerButton(button, toolTip, std::move(fn), mask);
}

QPushButton* Toolbar::registerButton(
    QPushButton* button, const QString& toolTip, boost::function<void()> fn, unsigned int mask)
{
    m_buttons[button] = {mask, button, std::move(fn)};
    button->setToolTip(toolTip);
    if (button->text().isEmpty())
        button->setAccessibleName(toolTip);
    m_layout->addWidget(button);
    // By name: a class derived from this one can have its own onClicked().
    connect(button, SIGNAL(clicked()), this, SLOT(onClicked()));
    vrn_connect(button, &QObject::destroyed, this, [this](QObject* destroyed) {
        // The function is destroyed after the map has changed: what it holds may call the
        // toolbar.
        const auto ended = m_buttons.extract(destroyed);
    });
    return button;
}

void Toolbar::addLabel(const QString& text, const QString& toolTip)
{
    auto* label = new QLabel(text, this);
    label->setToolTip(toolTip);
    m_layout->addWidget(label);
}

void Toolbar::addSpacing(int size)
{
    m_layout->addSpacing(size);
}

void Toolbar::addStretch(int stretch)
{
    m_layout->addStretch(stretch);
}

void Toolbar::addWidget(QWidget* widget)
{
    VRN_ASSERT(widget);
    if (widget)
        m_layout->addWidget(widget);
}

void Toolbar::clear()
{
    disposeOfButtons([](const QPushButton&) { return true; });
}

template <typename Predicate>
void Toolbar::disposeOfButtons(Predicate isOurs)
{
    // When a button is destroyed, what its function holds may destroy the others and call the
    // toolbar, so the toolbar forgets all of them first.
    const auto forgotten = std::exchange(m_buttons, {});
    std::vector<QPointer<QPushButton>> buttons;
    for (const auto& entry : forgotten) {
        entry.second.button->disconnect(this);
        if (isOurs(*entry.second.button))
            buttons.emplace_back(entry.second.button);
    }
    for (const auto& button : buttons)
        detail::disposeOf(button);
}

void Toolbar::setButtonsEnabled(bool enabled, unsigned int mask)
{
    // A disabled button gives the focus to the next one. A slot that is told of that may
    // change the toolbar, and Qt then goes on with both.
    const detail::Alive alive(this, this);
    std::vector<QPointer<QPushButton>> buttons;
    for (const auto& entry : m_buttons) {
        if ((entry.second.mask & mask) != 0)
            buttons.emplace_back(entry.second.button);
    }
    for (const auto& button : buttons) {
        if (button)
            button->setEnabled(enabled);
    }
}

void Toolbar::onClicked()
{
    const auto entry = m_buttons.find(sender());
    if (entry == m_buttons.end() || !entry->second.fn)
        return;
    // A copy: the function may destroy its button, and itself with it.
    const auto fn = entry->second.fn;
    const detail::Alive alive(this, entry->second.button);
    try {
        fn();
    } catch (const std::exception& exception) {
        warn(alive ? this : nullptr,
            tr("An exception occurred:\n%1").arg(QString::fromUtf8(exception.what())));
    }
}

} // namespace vrn::qt
