#include "controls/parts/readable_colours_p.h"

#include <QApplication>
#include <QEvent>
#include <QLineEdit>
#include <QScopedValueRollback>
#include <QStyle>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace vrn::qt::detail {
namespace {

constexpr std::array groups{QPalette::Active, QPalette::Inactive, QPalette::Disabled};
constexpr std::array textRoles{
    QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::PlaceholderText};

// Tells a palette that Qt has made for a style sheet, from the one that it got from us before.
// It stands in a role with which nothing is painted.
constexpr QRgb mark = qRgb(1, 2, 3);

// Off-white grounds, on which black is readable.
constexpr QRgb groundOfReadOnly = qRgb(239, 239, 239);
constexpr QRgb groundOfDisabled = qRgb(200, 200, 200);

// From here on two grounds can be told apart.
constexpr double differentGrounds = 1.1;

template <typename Function>
void forEachRole(Function function)
{
    for (int role = 0; role < QPalette::NColorRoles; ++role) {
        if (role != QPalette::NoRole)
            function(static_cast<QPalette::ColorRole>(role));
    }
}

bool isSet(const QPalette& palette, QPalette::ColorRole role)
{
    return std::any_of(groups.begin(), groups.end(),
        [&](QPalette::ColorGroup group) { return palette.isBrushSet(group, role); });
}

bool isEqual(const QPalette& a, const QPalette& b, QPalette::ColorRole role)
{
    return std::all_of(groups.begin(), groups.end(),
        [&](QPalette::ColorGroup group) { return a.brush(group, role) == b.brush(group, role); });
}

void copy(const QPalette& from, QPalette& to, QPalette::ColorRole role)
{
    for (const QPalette::ColorGroup group : groups)
        to.setBrush(group, role, from.brush(group, role));
}

// QPalette::resolve() would forget what `palette` sets if `over` sets nothing.
QPalette withAll(const QPalette& over, QPalette palette)
{
    forEachRole([&](QPalette::ColorRole role) {
        if (isSet(over, role))
            copy(over, palette, role);
    });
    return palette;
}

// The roles in which `palette` differs from `other`, and nothing else.
QPalette difference(const QPalette& palette, const QPalette& other)
{
    QPalette result;
    forEachRole([&](QPalette::ColorRole role) {
        if (!isEqual(palette, other, role))
            copy(palette, result, role);
    });
    return result;
}

// Whether palettes pass through widgets that have a style sheet.
bool arePropagated()
{
    return QCoreApplication::testAttribute(Qt::AA_UseStyleSheetPropagationInWidgetStyles);
}

// What the widgets around `widget` set for all that is inside. By default Qt hands none of it
// down to a widget that has a style sheet.
QPalette handedDown(const QWidget& widget)
{
    const QWidget* parent = widget.isWindow() ? nullptr : widget.parentWidget();
    if (!parent || (parent->testAttribute(Qt::WA_StyleSheet) && !arePropagated()))
        return QPalette();
    return withAll(parent->palette(), handedDown(*parent));
}

// Whether the widget has a style sheet, its own or that of a widget around it.
bool isStyled(const QWidget& widget)
{
    const QWidget* parent = widget.parentWidget();
    return !widget.styleSheet().isEmpty() || !qApp->styleSheet().isEmpty()
        || (parent && parent->testAttribute(Qt::WA_StyleSheet));
}

bool isMarked(const QPalette& palette)
{
    return palette.color(QPalette::Active, QPalette::NoRole) == QColor(mark);
}

// The contrast ratio of the Web Content Accessibility Guidelines: 1 for equal colours, 21 for
// black on white.
double contrast(const QColor& a, const QColor& b)
{
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    const auto luminance = [&](const QColor& colour) {
        return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF())
            + 0.0722 * linear(colour.blueF());
    };
    const auto [darker, lighter] = std::minmax({luminance(a), luminance(b)});
    return (lighter + 0.05) / (darker + 0.05);
}

// The ground of a read-only edit: that of its window or, where edits have that anyway, one
// that is slightly darker or lighter.
QColor readOnlyGround(const QPalette& palette, QPalette::ColorGroup group, const QColor& ground)
{
    const QColor& window = palette.color(group, QPalette::Window);
    if (group == QPalette::Disabled || contrast(window, ground) >= differentGrounds)
        return window;
    QColor veil = readableOn(ground);
    veil.setAlpha(25);
    return laidOver(veil, ground);
}

bool isReadable(const QColor& text, const QColor& ground, QPalette::ColorGroup group)
{
    return contrast(text, ground) >= (group == QPalette::Disabled ? 2.5 : 4.5);
}

} // namespace

QColor readableOn(const QColor& ground)
{
    const QColor black(Qt::black);
    const QColor white(Qt::white);
    return contrast(black, ground) >= contrast(white, ground) ? black : white;
}

QColor laidOver(const QColor& colour, const QColor& ground)
{
    const auto mixed = [&](int upper, int lower) {
        return lower + (upper - lower) * colour.alpha() / 255;
    };
    return {mixed(colour.red(), ground.red()), mixed(colour.green(), ground.green()),
        mixed(colour.blue(), ground.blue())};
}

ReadableColours::ReadableColours(QWidget* widget)
    : ReadableColours(widget, widget)
{}

ReadableColours::ReadableColours(QWidget* widget, const QWidget* styled)
    : QObject(widget)
    , m_widget(widget)
    , m_styled(styled)
    , m_sheet(styled->styleSheet())
{
    widget->installEventFilter(this);
}

ReadableColours::~ReadableColours() = default;

void ReadableColours::setStyleSheet(const QString& sheet)
{
    m_sheet = sheet;
    restyle();
}

bool ReadableColours::eventFilter(QObject* watched, QEvent* event)
{
    const QEvent::Type type = event->type();
    if (watched != m_widget) {
        // Qt hands no palette down to a widget with a style sheet.
        if (type == QEvent::PaletteChange && m_shown)
            update();
        return false;
    }
    switch (type) {
    case QEvent::PaletteChange:
        onPaletteChange();
        break;
    case QEvent::Polish:
        if (isStyledByLibrary()) {
            take();
            handOver();
            m_qtHasPalette = true;
        }
        break;
    case QEvent::StyleChange:
    case QEvent::ParentChange:
    case QEvent::ReadOnlyChange:
        if (!m_isStyling)
            update();
        break;
    case QEvent::Show:
    case QEvent::Paint:
        if (isMarked(m_widget->palette()))
            update();
        break;
    default:
        break;
    }
    return false;
}

bool ReadableColours::isStyledByLibrary() const
{
    return m_styled && !m_sheet.isEmpty() && m_styled->styleSheet() == m_sheet;
}

// What its style sheet sets must not be taken for a palette that it sets.
bool ReadableColours::isStyledByApplication() const
{
    return isStyled(*m_widget) && !isStyledByLibrary();
}

bool ReadableColours::isReadOnly() const
{
    const auto* edit = qobject_cast<const QLineEdit*>(m_widget);
    return edit && edit->isReadOnly();
}

// What the widget would have if nothing were set on it.
QPalette ReadableColours::inherited() const
{
    return withAll(handedDown(*m_widget), QApplication::palette(m_widget));
}

QPalette ReadableColours::withoutStyle() const
{
    return withAll(m_own, inherited());
}

void ReadableColours::update()
{
    if (!isStyled(*m_widget))
        m_qtHasPalette = false;
    if (isStyledByLibrary()) {
        restyle();
    } else if (isReadOnly() && !isStyled(*m_widget)) {
        take();
        m_byStyle = QPalette();
        show();
    } else {
        giveBack();
    }
}

// For a style sheet Qt first restores the palette from before the last one, then makes its
// own from that.
void ReadableColours::onPaletteChange()
{
    if (m_isSettingPalette)
        return;
    const QPalette palette = m_widget->palette();
    if (isMarked(palette)) {
        // The palettes around the widget may have changed since.
        if (palette == m_handedOver)
            handOver();
    } else if (m_isStyling) {
        // From the time when the widget had no style sheet but the application's.
        if (!m_isOwnKnown)
            adopt();
        handOver();
    } else if (m_shown && !isStyledByApplication()) {
        adopt();
        update();
    }
}

// From here on the palette of the widget is ours.
void ReadableColours::take()
{
    if (m_isOurs)
        return;
    m_isOurs = true;
    m_own = QPalette();
    m_isOwnKnown = false;
    if (!isStyled(*m_widget))
        adopt();
}

// Takes note of what the application has set on the widget.
void ReadableColours::adopt()
{
    const QPalette palette = m_widget->palette();
    QPalette own;
    forEachRole([&](QPalette::ColorRole role) {
        const bool isOurs = m_shown && isEqual(palette, *m_shown, role);
        const QPalette& source = isOurs ? m_own : palette;
        if (isSet(palette, role) && isSet(source, role))
            copy(source, own, role);
    });
    m_own = own;
    m_isOwnKnown = true;
}

// Gives Qt the palette to start from when it makes one for a style sheet.
void ReadableColours::handOver()
{
    m_beforeStyle = withoutStyle();
    QPalette palette = m_beforeStyle;
    palette.setColor(QPalette::NoRole, mark);
    setPalette(palette);
    m_handedOver = m_widget->palette();
}

void ReadableColours::restyle()
{
    m_widget->ensurePolished(); // Before that, Qt makes no palette.
    take();
    const bool isNew = m_widget == m_styled && m_widget->styleSheet() != m_sheet;
    if (isNew || withoutStyle() != m_beforeStyle) {
        const QScopedValueRollback<bool> styling(m_isStyling, true);
        // Where palettes are propagated, Qt restores none before it makes the next one.
        if (!m_qtHasPalette || arePropagated())
            handOver();
        m_qtHasPalette = true;
        if (isNew)
            m_widget->setStyleSheet(m_sheet);
        else
            m_widget->style()->polish(m_widget);
    }
    if (isMarked(m_widget->palette()))
        m_byStyle = difference(m_widget->palette(), m_beforeStyle);
    show();
}

void ReadableColours::show()
{
    if (m_parent != m_widget->parentWidget()) {
        if (m_parent)
            m_parent->removeEventFilter(this);
        m_parent = m_widget->parentWidget();
        if (m_parent)
            m_parent->installEventFilter(this);
    }
    QPalette palette = withAll(m_byStyle, withoutStyle());
    for (const QPalette::ColorGroup group : groups)
        makeReadable(palette, group);
    setPalette(palette);
    m_shown = m_widget->palette();
}

void ReadableColours::giveBack()
{
    if (!m_isOurs)
        return;
    m_shown.reset();
    if (isStyled(*m_widget)) {
        removeMark();
        return;
    }
    m_isOurs = false;
    m_widget->setAttribute(Qt::WA_StyleSheet, false); // Qt forgets it before the first show.
    setPalette(m_own);
}

// The application may copy the palette that its own style sheet leads to.
void ReadableColours::removeMark()
{
    QPalette palette = m_widget->palette();
    if (!isMarked(palette))
        return;
    copy(inherited(), palette, QPalette::NoRole);
    setPalette(palette);
}

void ReadableColours::setPalette(const QPalette& palette)
{
    const QScopedValueRollback<bool> setting(m_isSettingPalette, true);
    m_widget->setPalette(palette);
}

void ReadableColours::makeReadable(QPalette& palette, QPalette::ColorGroup group) const
{
    const QPalette::ColorRole textRole = m_widget->foregroundRole();
    const QPalette::ColorRole groundRole = m_widget->backgroundRole();
    const QColor ground = palette.color(group, groundRole);

    if (isSet(m_byStyle, groundRole)) {
        // If a style sheet names both, neither can give way.
        for (const QPalette::ColorRole role : textRoles) {
            const bool isFixed = isSet(m_byStyle, role);
            if (!isFixed && !isReadable(palette.color(group, role), ground, group))
                palette.setColor(group, role, readableOn(ground));
        }
        return;
    }

    std::vector<QColor> grounds;
    if (isReadOnly() && !isSet(m_own, groundRole))
        grounds.push_back(readOnlyGround(palette, group, ground));
    grounds.push_back(ground);
    if (isSet(m_byStyle, textRole)) {
        if (group == QPalette::Disabled)
            grounds.emplace_back(groundOfDisabled);
        else if (isReadOnly())
            grounds.emplace_back(groundOfReadOnly);
        grounds.emplace_back(Qt::white);
    }
    const QColor text = palette.color(group, textRole);
    const auto readable = std::find_if(grounds.begin(), grounds.end(),
        [&](const QColor& candidate) { return isReadable(text, candidate, group); });
    if (readable != grounds.end() && *readable != ground)
        palette.setColor(group, groundRole, *readable);
}

} // namespace vrn::qt::detail
