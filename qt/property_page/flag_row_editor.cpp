#include "row_editor_p.h"

#include <vrn/companion_qt/connect.h>
#include <vrn/qt/varies_string.h>

#include <QCheckBox>
#include <QKeyEvent>

#include "controls/parts/alive_p.h"
#include "controls/parts/readable_colours_p.h"

namespace vrn::qt::detail {

namespace {

/// Partially checked stands for objects that differ and for no value; the text beside the box
/// says which. A click on it checks it.
class FlagBox : public QCheckBox
{
public:
    FlagBox(QWidget* parent, bool isOptional)
        : QCheckBox(parent)
        , m_isOptional(isOptional)
    {}

protected:
    // A flag that may have no value comes round to that.
    void nextCheckState() override
    {
        switch (checkState()) {
        case Qt::PartiallyChecked:
            setCheckState(Qt::Checked);
            break;
        case Qt::Checked:
            setCheckState(Qt::Unchecked);
            break;
        case Qt::Unchecked:
            setCheckState(m_isOptional ? Qt::PartiallyChecked : Qt::Checked);
            break;
        }
    }

private:
    const bool m_isOptional;
};

class FlagRowEditor final : public RowEditor
{
public:
    FlagRowEditor(QWidget* parent, const PropertySelection::Row& row)
        : FlagRowEditor(new FlagBox(parent, row.isOptional()))
    {
        if (row.isOptional())
            onClearKeys(m_box, [this] { clear(); });
    }

    QWidget* widget() const override { return m_box; }

    void show(const PropertyState& state, const vrn::units::Context& /*units*/) override
    {
        setReason(QString());
        m_isEdited = false;
        m_shown = state.kind;
        const bool* value = boost::any_cast<bool>(&state.value);
        const bool isBlank = state.kind == PropertyState::NoObject
            || state.kind == PropertyState::Unreadable;
        m_box->setTristate(true);
        m_box->setCheckState(value ? (*value ? Qt::Checked : Qt::Unchecked)
                : isBlank          ? Qt::Unchecked
                                   : Qt::PartiallyChecked);
        m_shownState = m_box->checkState();
        updateText();
    }

    void setReadOnly(bool readOnly) override { m_box->setEnabled(!readOnly); }

    RowEntry entry() const override
    {
        if (!m_isEdited)
            return {};
        if (!m_reason.isEmpty())
            return {EditState::Refused, {}, m_reason};
        const Qt::CheckState state = m_box->checkState();
        return {EditState::Complete,
            state == Qt::PartiallyChecked ? boost::any() : boost::any(state == Qt::Checked),
            QString()};
    }

    QString text() const override
    {
        if (m_box->checkState() == Qt::PartiallyChecked)
            return isVarying() ? getVariesString() : QString();
        if (m_shown == PropertyState::NoObject || m_shown == PropertyState::Unreadable)
            return QString();
        return m_box->isChecked() ? tr("Yes") : tr("No");
    }

    void refuse(const QString& reason) override
    {
        m_isEdited = true;
        setReason(reason);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        return (!m_reason.isEmpty() && endsByKey(*event)) || RowEditor::eventFilter(watched, event);
    }

private:
    explicit FlagRowEditor(FlagBox* box)
        : RowEditor(box)
        , m_box(box)
        , m_colours(new ReadableColours(box))
    {
        box->installEventFilter(this);
        vrn_connect(box, &QCheckBox::clicked, this, &FlagRowEditor::onClicked);
    }

    void clear()
    {
        m_box->setCheckState(Qt::PartiallyChecked);
        onClicked();
    }

    void onClicked()
    {
        const Alive alive(this, m_box);
        setReason(QString());
        // Objects that differ have no value that a click could bring back.
        m_isEdited = m_shown == PropertyState::Varies || m_box->checkState() != m_shownState;
        updateText();
        Q_EMIT changed();
        if (alive)
            Q_EMIT ended(false);
    }

    bool isVarying() const { return m_shown == PropertyState::Varies && !m_isEdited; }

    void updateText()
    {
        m_box->setText(m_box->checkState() != Qt::PartiallyChecked ? QString()
                : isVarying()                                      ? getVariesString()
                                                                   : tr("(none)"));
    }

    void setReason(const QString& reason)
    {
        if (m_reason == reason)
            return;
        m_reason = reason;
        m_colours->setStyleSheet(
            reason.isEmpty() ? QString() : QStringLiteral("QCheckBox { color: red; }"));
    }

    FlagBox* const m_box;
    ReadableColours* const m_colours;
    PropertyState::Kind m_shown = PropertyState::NoObject;
    Qt::CheckState m_shownState = Qt::Unchecked;
    bool m_isEdited = false;
    QString m_reason;
};

} // namespace

RowEditor* makeFlagEditor(QWidget* parent, const PropertySelection::Row& row)
{
    return new FlagRowEditor(parent, row);
}

} // namespace vrn::qt::detail
