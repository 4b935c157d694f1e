#include "section_head_p.h"

#include <vrn/companion_qt/connect.h>

#include <QAccessibleWidget>
#include <QKeyEvent>
#include <QSignalBlocker>
#include <QStyleOptionToolButton>
#include <QStylePainter>

namespace vrn::qt::detail {
namespace {

constexpr int headMargin = 4;

/// Expanded or collapsed. Qt's own interface of a button says checked.
class SectionHeadAccessible : public QAccessibleWidget
{
public:
    explicit SectionHeadAccessible(SectionHead* head)
        : QAccessibleWidget(head, QAccessible::Button)
        , m_head(head)
    {}

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.expandable = true;
        state.expanded = m_head->isChecked();
        state.collapsed = !m_head->isChecked();
        return state;
    }

    QStringList actionNames() const override
    {
        return QStringList(pressAction()) + QAccessibleWidget::actionNames();
    }

    void doAction(const QString& name) override
    {
        if (name == pressAction())
            m_head->click();
        else
            QAccessibleWidget::doAction(name);
    }

private:
    SectionHead* const m_head;
};

QAccessibleInterface* createHeadAccessible(const QString& className, QObject* object)
{
    return className == QLatin1String(SectionHead::staticMetaObject.className())
        ? new SectionHeadAccessible(static_cast<SectionHead*>(object))
        : nullptr;
}

} // namespace

SectionHead::SectionHead(const QString& key, const QString& title, QWidget* parent)
    : QToolButton(parent)
{
    setObjectName(QStringLiteral("section.") + key);
    setText(title);
    setAccessibleName(title);
    // It has the size of a button with an arrow.
    setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    setArrowType(Qt::DownArrow);
    setAutoRaise(true);
    setCheckable(true);
    setChecked(true);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    QFont bold = font();
    bold.setBold(true);
    setFont(bold);
    // Qt ignores a factory that is installed already.
    QAccessible::installFactory(&createHeadAccessible);
    vrn_connect(this, &QToolButton::clicked, this, &SectionHead::openRequested);
}

QSize SectionHead::minimumSizeHint() const
{
    return {4 * headMargin + iconSize().width(), sizeHint().height()};
}

void SectionHead::setOpen(bool open)
{
    if (open == isChecked())
        return;
    const QSignalBlocker blocker(this);
    setChecked(open);
    QAccessible::State changed;
    changed.expanded = true;
    changed.collapsed = true;
    QAccessibleStateChangeEvent event(this, changed);
    QAccessible::updateAccessibility(&event);
}

void SectionHead::request(bool open)
{
    if (open != isChecked())
        Q_EMIT openRequested(open);
}

void SectionHead::keyPressEvent(QKeyEvent* event)
{
    const bool isMirrored = isRightToLeft();
    switch (event->key()) {
    case Qt::Key_Up:
        Q_EMIT stepRequested(-1);
        break;
    case Qt::Key_Down:
        Q_EMIT stepRequested(1);
        break;
    case Qt::Key_Left:
        request(isMirrored);
        break;
    case Qt::Key_Right:
        request(!isMirrored);
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        Q_EMIT openRequested(!isChecked());
        break;
    default:
        QToolButton::keyPressEvent(event);
    }
}

void SectionHead::changeEvent(QEvent* event)
{
    QToolButton::changeEvent(event);
    if (event->type() == QEvent::LayoutDirectionChange)
        update();
}

// Qt draws the arrow of a tool button on the left in any layout.
void SectionHead::paintEvent(QPaintEvent* /*event*/)
{
    QStylePainter painter(this);
    QStyleOptionToolButton option;
    initStyleOption(&option);
    option.text.clear();
    option.features &= ~QStyleOptionToolButton::Arrow;
    painter.drawComplexControl(QStyle::CC_ToolButton, option);

    const QRect room = rect().adjusted(headMargin, 0, -headMargin, 0);
    QRect arrow = room;
    arrow.setWidth(iconSize().width());
    QRect title = room;
    title.setLeft(arrow.right() + headMargin);

    const Qt::LayoutDirection direction = layoutDirection();
    option.rect = QStyle::visualRect(direction, rect(), arrow);
    painter.drawPrimitive(isChecked() ? QStyle::PE_IndicatorArrowDown
            : isRightToLeft()         ? QStyle::PE_IndicatorArrowLeft
                                      : QStyle::PE_IndicatorArrowRight,
        option);
    const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, title.width());
    painter.drawItemText(QStyle::visualRect(direction, rect(), title),
        int(QStyle::visualAlignment(direction, Qt::AlignLeft | Qt::AlignVCenter)), palette(),
        isEnabled(), shown, QPalette::ButtonText);

    // Not every style shows the focus of a tool button. Its arrow keys work after a click, too.
    if (hasFocus()) {
        QStyleOptionFocusRect focus;
        focus.initFrom(this);
        focus.state |= QStyle::State_KeyboardFocusChange;
        focus.rect = rect().adjusted(1, 1, -1, -1);
        focus.backgroundColor = palette().color(QPalette::Button);
        painter.drawPrimitive(QStyle::PE_FrameFocusRect, focus);
    }
}

} // namespace vrn::qt::detail
