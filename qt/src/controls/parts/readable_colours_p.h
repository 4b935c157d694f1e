#pragma once

#include <vrn/qt/vrn_qt2_export.h>

#include <QColor>
#include <QObject>
#include <QPalette>
#include <QPointer>
#include <QString>
#include <QWidget>

#include <optional>

namespace vrn::qt::detail {

/// Black or white, whichever can be read better on `ground`.
VRN_QT2_EXPORT QColor readableOn(const QColor& ground);

/// What is seen of `colour`, which may be transparent, on `ground`, which is not.
VRN_QT2_EXPORT QColor laidOver(const QColor& colour, const QColor& ground);

/// Keeps the text of a widget readable beside a style sheet of the library, whatever palette
/// the application has.
///
/// These style sheets name the colour of the text or that of the ground, and Qt paints what
/// they name. Where a style sheet names the text, the ground gives way if it has to, and where
/// it names the ground, the text does. These colours go through the palette of the widget, and
/// leave with the style sheet.
///
/// The palettes of the application stay its own. It may set them on the widget or around it,
/// before or after: none is lost, and none comes back when it is out of date. That is the
/// larger part of the work here, because Qt keeps the palette from before a style sheet, and
/// hands none down to a widget that has one.
///
/// A read-only line edit has the ground of its window, or one close by if editable ones have
/// that, too. A ground that the application has set on it stays.
class VRN_QT2_EXPORT ReadableColours : public QObject
{
public:
    /// For the style sheets of `widget`, which owns this object.
    explicit ReadableColours(QWidget* widget);
    /// For the style sheet that `styled` has, of which `widget` is a part.
    ReadableColours(QWidget* widget, const QWidget* styled);
    ~ReadableColours() override;

    /// Sets a style sheet of the library on the widget.
    void setStyleSheet(const QString& sheet);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool isStyledByLibrary() const;
    bool isStyledByApplication() const;
    bool isReadOnly() const;
    QPalette inherited() const;
    QPalette withoutStyle() const;
    void update();
    void onPaletteChange();
    void take();
    void adopt();
    void handOver();
    void restyle();
    void show();
    void giveBack();
    void removeMark();
    void setPalette(const QPalette& palette);
    void makeReadable(QPalette& palette, QPalette::ColorGroup group) const;

    QWidget* const m_widget;
    const QPointer<const QWidget> m_styled; ///< The style sheet is this widget's.
    QString m_sheet;
    QPointer<QWidget> m_parent;
    QPalette m_own; ///< What the application has set on the widget itself.
    bool m_isOwnKnown = false; ///< Not while a style sheet of the application hides it.
    QPalette m_beforeStyle; ///< From what Qt makes a palette for a style sheet.
    QPalette m_handedOver; ///< The same with the mark. Qt restores it.
    QPalette m_byStyle; ///< What style sheets have set.
    std::optional<QPalette> m_shown; ///< None while a style sheet of the application rules.
    bool m_isOurs = false; ///< The palette of the widget, until it is given back.
    bool m_qtHasPalette = false; ///< The one handed over.
    bool m_isStyling = false;
    bool m_isSettingPalette = false;
};

} // namespace vrn::qt::detail
