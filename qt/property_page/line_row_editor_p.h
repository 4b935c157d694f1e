#pragma once

#include <vrn/qt/value_history.h>

#include "field_line_edit_p.h"
#include "field_reader_p.h"
#include "row_editor_p.h"

#include <memory>
#include <optional>
#include <vector>

class QAction;
class QLabel;

namespace vrn::qt::detail {

/// The editor of a quantity, a number, an integer or a text.
class LineRowEditor : public RowEditor
{
    Q_OBJECT

public:
    LineRowEditor(
        QWidget* parent, const PropertySelection::Row& row, const RowQuestions& questions);
    ~LineRowEditor() override;

    QWidget* widget() const override;
    void show(const PropertyState& state, const vrn::units::Context& units) override;
    void setReadOnly(bool readOnly) override;
    RowEntry entry() const override;
    QString text() const override;
    QString status() const override;
    void refuse(const QString& reason) override;
    void remember() override;

private:
    const Field& field() const { return m_reader->row().field; }
    bool isSameAsShown(const PropertyState& state) const;
    void showAtRest();
    PropertySpread spread();
    QString textOfAll();
    void addClearAction();
    void retranslate();
    void showStatus();

    /// What was made of a text.
    struct Judged
    {
        int revision = 0; ///< Of the text; see FieldLineEdit::revision().
        RowEntry entry;
        QString outcome; ///< What a sum comes to, or what a relative edit would do.
        bool isDecided = false; ///< By the page, or by taking it from a list.
    };
    Judged judged() const;
    Judged read() const;
    void decide(const RowEntry& made);

    FieldQuestions::Verdict judge();
    QString hintAtRest();
    std::vector<EntryOffer> offers();
    std::vector<EntryOffer> offersAtRest();
    EntryOffer offerOf(const PropertySpread::Share& share, const PropertySpread& all);
    void take(const boost::any& value);
    std::optional<vrn::ValueHistory> history() const;
    void onEdited();
    void onEnded();

    std::shared_ptr<FieldReader> m_reader; ///< Held by a call that may destroy this.
    RowQuestions m_questions;
    FieldLineEdit* m_line = nullptr;
    QLabel* m_mark = nullptr; ///< That objects differ below the shown digits.
    QAction* m_clear = nullptr; ///< Of an optional property.
    PropertyState m_state;
    QString m_textAtRest;
    bool m_isMarked = false;
    std::optional<PropertySpread> m_spread; ///< Of m_state, once it was asked for.
    mutable std::optional<Judged> m_judged;
    bool m_isOfHistory = false; ///< The text was taken from there.
};

} // namespace vrn::qt::detail
