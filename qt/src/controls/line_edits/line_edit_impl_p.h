#pragma once

#include <vrn/qt/value_history.h>
#include <vrn/qt/vrn_qt2_export.h>

#include <boost/function.hpp>
#include <boost/shared_ptr.hpp>

#include <QLineEdit>
#include <QMargins>
#include <QPointer>
#include <QStringList>

#include <functional>
#include <vector>

class QToolButton;

namespace vrn::qt::detail {

class EditHintPopup;
class EntryPopup;
class HistoryPopup;
class PopupGroup;
class ReadableColours;

/// An entry of the list under the hint.
struct EntryOffer
{
    QString label; ///< In the list.
    QString text; ///< What the text becomes.
    std::function<void()> onTaken; ///< Called afterwards, if it is not empty.
    bool isHeading = false; ///< Of the entries after it; cannot be taken.
};

/// The QLineEdit of a SimpleLineEdit: a line edit with a window for hints and
/// one for earlier values below it, and at most one tool button inside. Its text can be read
/// on any palette of the application, and a read-only edit looks it.
///
/// The popups are built when the edit first gets the focus, or first has a hint
/// to show; a form of hundreds of edits does not pay for windows that nobody
/// sees.
class VRN_QT2_EXPORT LineEditImpl : public QLineEdit
{
    Q_OBJECT

public:
    /// Bit 0 of the options: no frame, on white.
    static constexpr unsigned int optionBorderless = 1;

    explicit LineEditImpl(unsigned int options, QWidget* parent = nullptr);
    ~LineEditImpl() override;

    /// Sets a style sheet of the library. What the styles before it did for the place of
    /// the text goes on: the room for a button, and the missing frame.
    void setLook(const QString& styleSheet);

    /// See SimpleLineEdit::addButton.
    QToolButton* addButton(
        const boost::function<QString(const QString&)>& fn, const QPixmap& pixmap);

    void setValueHistory(boost::shared_ptr<vrn::ValueHistory> history);

    /// See SimpleLineEdit::setCompletions.
    void setCompletions(std::function<QStringList(const QString&)> completions);

    /// Offers what `offers` gives for the text: while the user types, and when offer() is
    /// called. Otherwise as setCompletions(), which replaces it.
    void setOffers(std::function<std::vector<EntryOffer>(const QString& text)> offers);
    void offer();
    void dropOffers();

    /// Shows `hint` below the edit if it has the focus, and hides the window of
    /// hints if `hint` is empty and there are no completions.
    void showEditHint(const QString& hint);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// The edit has the focus, and its popups are ready.
    void focused();

protected:
    void changeEvent(QEvent* event) override;
    bool event(QEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    /// Gives the popups an event that they do not get as event filters.
    void tellPopups(QEvent* event);

private Q_SLOTS:
    void onHistoryItemSelected(const QString& text);
    void onOfferChosen(int row);
    void onClicked1();

private:
    void buildPopups();
    void disposeOfPopups();
    void showHintPopup();
    void placeButton();
    int frameWidth() const;
    bool isPadded() const;
    QSize inFull(QSize hint) const;
    void makeRoomForButton();
    QMargins ownMargins() const;

    ReadableColours* m_colours;
    PopupGroup* m_popups = nullptr;
    QPointer<HistoryPopup> m_historyPopup;
    QPointer<EditHintPopup> m_hintPopup; ///< If there are completions, the next one.
    QPointer<EntryPopup> m_entryPopup;
    std::function<std::vector<EntryOffer>(const QString&)> m_giveOffers;
    std::vector<EntryOffer> m_offers; ///< In the list.
    boost::shared_ptr<vrn::ValueHistory> m_history;
    unsigned int m_options;
    QPointer<QToolButton> m_btn1;
    QString m_padding; ///< The style sheet that makes room for the button.
    int m_roomForButton = 0;
    QMargins m_margins; ///< Of the text, as they were set last.
    QMargins m_ownMargins; ///< Those of the application.
    boost::function<QString(const QString&)> m_buttonFunction;
};

} // namespace vrn::qt::detail
