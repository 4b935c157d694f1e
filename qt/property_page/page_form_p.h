#pragma once

#include "page_row_p.h"
#include "page_state_p.h"

#include <QWidget>

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

class QGridLayout;
class QLabel;
class QLineEdit;
class QScrollArea;
class QVBoxLayout;

namespace vrn::qt::detail {

class SectionHead;

using SharedRow = std::shared_ptr<PageRow>;

/// What a page looks like: a filter, rows in sections that fold, and a line for receipts. It
/// makes an editor when its row is first seen, and knows neither model nor selection.
class PageForm : public QWidget
{
    Q_OBJECT

public:
    explicit PageForm(QWidget* parent);
    ~PageForm() override;

    /// In the order of the page. `hint` stands there if there are none.
    void setProperties(const std::vector<PropertySelection::Row>& properties,
        const std::function<RowQuestions(const std::string&)>& questions, const QString& hint);
    const std::vector<SharedRow>& rows() const { return m_rows; }
    /// Null for an unknown key.
    SharedRow row(const std::string& key) const;

    /// Makes the editor of a row that nobody may have seen yet.
    void make(PageRow& row);
    /// Opens its section, and clears the filter if that hides it. It may run any code.
    void open(const std::string& key);
    void scrollTo(PageRow& row);

    const OpenSections& openSections() const { return m_isOpen; }
    void setOpenSections(const OpenSections& sections);

    bool isFilterVisible() const;
    void setFilterVisible(bool visible);
    void focusFilter();

    bool isReceiptVisible() const { return m_isReceiptVisible; }
    void setReceiptVisible(bool visible);
    void setReceipt(const QString& text);

    /// Renews its texts. `hint` is that of setProperties().
    void retranslate(const QString& hint);

    /// Shows and hides rows by their sections and the filter.
    void arrange();

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    /// Sections or the filter have changed. The page calls arrange().
    void arrangementDue();
    void made(vrn::qt::detail::PageRow* row);
    /// Before it is hidden by its section or by the filter.
    void hiding(vrn::qt::detail::PageRow* row);
    /// Rows have come into view, or others stay.
    void arranged();

private:
    struct Section
    {
        std::string key;
        SectionHead* head; ///< Null for rows without a section.
        std::vector<SharedRow> rows;
    };

    bool isOpen(const std::string& section) const;
    bool isFound(const PageRow& row) const;
    bool isInView(const Section& section, const PageRow& row) const;
    void clear();
    void addSection(const PropertySection& section, int gridRow);
    void requestOpen(const std::string& section, bool open);
    void step(const SectionHead* from, int by);
    void updateHint();
    void updateTabOrder();

    QLineEdit* m_filter;
    QScrollArea* m_scroll;
    QWidget* m_content;
    QVBoxLayout* m_column;
    QGridLayout* m_grid = nullptr;
    QLabel* m_hint;
    QLabel* m_receipt;
    QString m_emptyHint;
    bool m_isReceiptVisible = true;

    std::vector<SharedRow> m_rows;
    std::vector<Section> m_sections;
    OpenSections m_isOpen;
    std::set<std::string> m_foldedInFilter; ///< By the user, until the filter changes.
    bool m_isTabOrderDue = false;
    int m_change = 0; ///< Counts the calls of setProperties().
};

} // namespace vrn::qt::detail
