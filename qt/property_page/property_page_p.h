#pragma once

#include <vrn/qt/property_page.h>

#include "page_form_p.h"

#include <QPointer>
#include <QUndoStack>

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vrn::qt {

/// Reads the model for the form, and writes what the user has edited.
///
/// Functions of the model, editors of the application and slots of the page's signals may
/// destroy it. What runs such code and goes on afterwards returns whether it is still there.
class PropertyPage::Private
{
public:
    /// What becomes of an entry that cannot be written when the editing ends.
    enum class Rest
    {
        Stays,
        IsDropped
    };

    explicit Private(PropertyPage& page);
    Private(const Private&) = delete;
    Private& operator=(const Private&) = delete;
    ~Private();

    /// What was set last, also if it is not shown yet.
    /// @{
    const ObjectIds& ids() const { return m_isSelecting ? m_nextIds : m_ids; }
    PropertyModel* model() const { return m_isSelecting ? m_nextModel : m_model; }
    bool isReadOnly() const { return m_isReadOnly; }
    /// @}

    /// What ends a pending text takes effect after a write that is going on, be it of the page
    /// or of somebody else.
    /// @{
    void select(PropertyModel* model, ObjectIds ids);
    void setStack(QUndoStack* stack);
    void setHistory(const boost::shared_ptr<vrn::IValueHistoryStorage>& history);
    void setReadOnly(bool readOnly);
    /// In the current language and locale.
    void showAgain();
    bool endAll(Rest rest);
    /// @}

    bool isPending() const;
    bool finish();
    void cancelAll();
    /// Carries out what has waited for a write, once that is over.
    bool applyPostponed();
    void flush();
    /// What stands in the place of rows, if there are none.
    QString hint() const;
    /// Both throw PropertyError.
    PropertyReceipt setValue(const std::string& key, const boost::any& value);
    PropertyReceipt load(const QJsonObject& saved);

    /// Its editor is made, and shows what the model has. Null for an unknown key.
    detail::SharedRow upToDate(const std::string& key);
    const PropertySelection& selection() const { return *m_selection; }
    detail::PageForm& form() { return *m_form; }

    /// To see that it is asked to close.
    void watchWindow();
    QWidget* window() const { return m_window.data(); }
    /// True if the window closes after the write, because a text would be lost with it now.
    bool closeLater();

private:
    using Row = detail::SharedRow;
    using Act = std::function<PropertyReceipt(PropertySelection&)>;

    void showNextSelection();
    void setModel(PropertyModel* model);
    void showHistory();
    void build();
    detail::RowQuestions questions(const std::string& key);
    std::string focusedKey() const;

    void onMade(detail::PageRow& row);
    void onChanged(const PropertyKeys& keys, const ObjectIds& ids);
    void onUnitsChanged();
    void showReadOnly();
    void arrange();
    void onEnded(const std::string& key, Rest rest, bool isInGesture);

    bool read(const std::vector<Row>& rows);
    bool readDue();
    bool end(const Row& row, Rest rest, bool isInGesture);
    bool write(const Row& row, const boost::any& value, Rest rest, bool isInGesture);
    /// Throws PropertyError.
    PropertyReceipt carryOut(const Act& act);
    bool afterWrite(const PropertyReceipt& receipt);
    /// True if `act` waits for the end of the write, or if the page has been destroyed.
    bool postpone(std::function<void()> act);
    void applyPostponedLater();
    /// Whether no text can be written now.
    bool isBusy() const { return m_isWriting || (m_model && m_model->isWriting()); }
    /// Whether an act that ends texts has to wait, because a text would be lost now.
    bool mustWait() const;
    bool updatePending();
    bool refuse(const QString& caption, const QString& reason);
    std::uint64_t gestureOf(const detail::PageRow& row, bool isInGesture);

    PropertyPage& m_page;
    detail::PageForm* const m_form;
    QPointer<PropertyModel> m_model;
    QPointer<QUndoStack> m_stack;
    boost::shared_ptr<vrn::IValueHistoryStorage> m_history;
    ObjectIds m_ids; ///< Sorted, without duplicates.
    std::vector<std::uint32_t> m_kinds; ///< Of the ids. They decide which rows there are.
    std::shared_ptr<PropertySelection> m_selection;
    detail::SharedUnits m_units;
    QPointer<QWidget> m_window;
    bool m_isReadOnly = false;
    bool m_wasPending = false;
    int m_change = 0; ///< Counts the selections.

    bool m_isWriting = false; ///< The page itself.
    std::string m_written; ///< The property that the user has edited.
    std::deque<std::function<void()>> m_postponed;
    bool m_isSelecting = false; ///< The texts of the previous selection are being ended.
    QPointer<PropertyModel> m_nextModel;
    ObjectIds m_nextIds;

    std::optional<std::string> m_gestureKey;
    std::uint64_t m_gesture = 0;

    std::unique_ptr<QObject> m_modelLinks;
    std::unique_ptr<QObject> m_stackLinks;
    std::unique_ptr<QObject> m_links;
};

} // namespace vrn::qt
