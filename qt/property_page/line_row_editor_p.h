#pragma once

#include "field_reader_p.h"
#include "row_editor_p.h"

#include <QPointer>

class QLabel;

namespace vrn::qt::detail {

class FieldLineEdit;

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
    void refuse(const QString& reason) override;

private:
    void onEdited();
    bool isAccepted(const QString& text) const;
    QString hint(const QString& text) const;
    QString fullText() const;
    RowEntry entryOf(const QString& text, QString* outcome) const;
    bool isSameAsShown(const PropertyState& state) const;

    FieldReader m_reader;
    RowQuestions m_questions;
    FieldLineEdit* m_line = nullptr;
    PropertyState m_state;
    /// By the page.
    /// @{
    QString m_refusedText;
    QString m_refusal;
    /// @}
};

} // namespace vrn::qt::detail
