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

#include <exception>
#include <utility>
#include <vector>

namespace vrn::qt {
namespace {

QBoxLayout* createLayout(QWidget* parent, ExpandDirection direction)
{
    if (direction == ExpandHorizontal)
        return new VRN_QT_HBoxLayout(parent, nullptr);
    return new VRN_QT_VBoxLayout(parent, nullptr);
}

// The box of QMessageBox::warning, which must not be used itself: it keeps the
// box on the stack as a child of `parent`, which may be destroyed while the box
// is open.
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

// Lives while Qt is at work on a button, below a call of the application, and is
// not done with it: clear() must not delete that button yet.
class Toolbar::ButtonInUse
{
public:
    explicit ButtonInUse(Toolbar* toolbar)
        : m_toolbar(toolbar)
    {
        ++toolbar->m_buttonsInUse;
    }
    ~ButtonInUse()
    {
        if (m_toolbar)
            --m_toolbar->m_buttonsInUse;
    }
    ButtonInUse(const ButtonInUse&) = delete;
    ButtonInUse& operator=(const ButtonInUse&) = delete;

    /// Null once the toolbar has been destroyed.
    QWidget* toolbar() const { return m_toolbar.data(); }

private:
    QPointer<Toolbar> m_toolbar;
};

Toolbar::Toolbar(QWidget* parent, ExpandDirection direction)
    : QWidget(parent)
    , m_layout(createLayout(this, direction))
{
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(0);
    m_layout->setAlignment(Qt::AlignLeft | Qt::AlignTop);
}

Toolbar::~Toolbar()
{
    // The buttons go after this part of the toolbar, and would report that. What
    // their functions hold goes now, and may call the toolbar: it has forgotten them.
    const auto ended = std::exchange(m_buttons, {});
    for (const auto& entry : ended)
        entry.second.button->disconnect(this);
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
        // The function goes when the map is done: what it holds may call the toolbar.
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
    // Whoever hears of the end of one button may bring about that of the others,
    // and so may what a function holds: the toolbar has forgotten all by then.
    const auto cleared = std::exchange(m_buttons, {});
    std::vector<QPointer<QPushButton>> buttons;
    for (const auto& entry : cleared) {
        entry.second.button->disconnect(this);
        buttons.emplace_back(entry.second.button);
    }

    const bool mayDelete = m_buttonsInUse == 0;
    for (const auto& button : buttons) {
        if (mayDelete) {
            delete button;
        } else if (button) {
            // Without its name nobody finds it in place of a new one. To hide it
            // comes last: whoever hears of its focus may destroy the toolbar.
            button->deleteLater();
            button->setObjectName(QString());
            m_layout->removeWidget(button);
            button->hide();
        }
    }
}

void Toolbar::setButtonsEnabled(bool enabled, unsigned int mask)
{
    // A disabled button gives the focus away, and whoever hears of that may
    // change the toolbar.
    const ButtonInUse inUse(this);
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
    const ButtonInUse inUse(this);
    try {
        fn();
    } catch (const std::exception& exception) {
        warn(inUse.toolbar(),
            tr("An exception occurred:\n%1").arg(QString::fromUtf8(exception.what())));
    }
}

} // namespace vrn::qt
