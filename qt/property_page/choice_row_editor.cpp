#include "row_editor_p.h"

#include <vrn/companion_qt/connect.h>
#include <vrn/qt/varies_string.h>

#include <QComboBox>
#include <QKeyEvent>
#include <QWheelEvent>

#include "controls/parts/alive_p.h"
#include "controls/parts/readable_colours_p.h"
#include "qt_compat_p.h"

namespace vrn::qt::detail {

namespace {

constexpr int shownLetters = 10;
constexpr int fewestLetters = 2;

/// A closed list. Without the focus it leaves the wheel to the page.
class ChoiceBox : public QComboBox
{
public:
    explicit ChoiceBox(QWidget* parent)
        : QComboBox(parent)
    {
        setFocusPolicy(Qt::StrongFocus);
        setSizeAdjustPolicy(compat::adjustToMinimumContentsLength);
        setMinimumContentsLength(shownLetters);
    }

    /// On a narrow page it gives way, as a line edit does.
    QSize minimumSizeHint() const override
    {
        const int letter = fontMetrics().horizontalAdvance(QLatin1Char('X'));
        return QComboBox::minimumSizeHint() - QSize((shownLetters - fewestLetters) * letter, 0);
    }

    /// Whether a key or the wheel is picking while the list is closed.
    bool isInGesture() const { return m_isInGesture; }

protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        gesture([=] { QComboBox::keyPressEvent(event); });
    }
    void wheelEvent(QWheelEvent* event) override
    {
        if (hasFocus())
            gesture([=] { QComboBox::wheelEvent(event); });
        else
            event->ignore();
    }

private:
    template <typename Act>
    void gesture(Act act)
    {
        const Alive alive(this, this);
        m_isInGesture = true;
        act();
        if (alive)
            m_isInGesture = false;
    }

    bool m_isInGesture = false;
};

/// The entries of the field, after "(none)" if the property is optional. What is none of
/// them stands at the top while it is shown: a value that has no entry, or "*VARIES*".
/// Picking it writes nothing.
class ChoiceRowEditor final : public RowEditor
{
public:
    ChoiceRowEditor(QWidget* parent, const PropertySelection::Row& row)
        : ChoiceRowEditor(new ChoiceBox(parent), row)
    {}

    QWidget* widget() const override { return m_box; }

    void show(const PropertyState& state, const vrn::units::Context& units) override
    {
        setReason(QString());
        m_place = -1;
        QString extra;
        switch (state.kind) {
        case PropertyState::Varies:
            extra = getVariesString();
            break;
        case PropertyState::Common:
            m_place = placeOf(state.value);
            if (m_place < 0)
                extra = m_row.field.text(state.value, units);
            break;
        case PropertyState::NoValue:
            m_place = m_row.isOptional() ? 0 : -1;
            break;
        case PropertyState::NoObject:
        case PropertyState::Unreadable:
            break;
        }
        setExtra(extra);
        if (m_row.isOptional())
            m_box->setItemText(m_hasExtra ? 1 : 0, tr("(none)"));
        m_box->setCurrentIndex(m_hasExtra ? 0 : m_place);
    }

    void setReadOnly(bool readOnly) override
    {
        m_box->setEnabled(!readOnly && !m_row.field.entries().empty());
    }

    RowEntry entry() const override
    {
        const int place = m_box->currentIndex() - (m_hasExtra ? 1 : 0);
        if (place == m_place || place < 0)
            return {};
        if (!m_reason.isEmpty())
            return {EditState::Refused, {}, m_reason};
        const int none = m_row.isOptional() ? 1 : 0;
        return {EditState::Complete,
            place < none ? boost::any() : m_row.field.entries()[std::size_t(place - none)].second,
            QString()};
    }

    QString text() const override
    {
        return m_row.isOptional() && m_box->currentIndex() == (m_hasExtra ? 1 : 0)
            ? QString()
            : m_box->currentText();
    }

    void refuse(const QString& reason) override { setReason(reason); }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        return (!m_reason.isEmpty() && endsByKey(*event)) || RowEditor::eventFilter(watched, event);
    }

private:
    ChoiceRowEditor(ChoiceBox* box, const PropertySelection::Row& row)
        : RowEditor(box)
        , m_box(box)
        , m_colours(new ReadableColours(box))
        , m_row(row)
    {
        if (row.isOptional()) {
            box->addItem(QString()); // Its text is set when it is shown.
            onClearKeys(box, [this] { clear(); });
        }
        for (const auto& entry : row.field.entries())
            box->addItem(entry.first);
        box->installEventFilter(this);
        vrn_connect(
            box, QOverload<int>::of(&QComboBox::activated), this, &ChoiceRowEditor::onPicked);
    }

    void clear()
    {
        m_box->setCurrentIndex(m_hasExtra ? 1 : 0);
        onPicked();
    }

    void onPicked()
    {
        const Alive alive(this, m_box);
        setReason(QString());
        const bool isInGesture = m_box->isInGesture();
        Q_EMIT changed();
        if (alive)
            Q_EMIT ended(isInGesture);
    }

    /// -1 for what is none of the entries.
    int placeOf(const boost::any& value) const
    {
        const NamedValueList& entries = m_row.field.entries();
        for (std::size_t i = 0; i < entries.size(); ++i) {
            if (m_row.field.valueType().isSame(entries[i].second, value))
                return int(i) + (m_row.isOptional() ? 1 : 0);
        }
        return -1;
    }

    void setExtra(const QString& text)
    {
        if (m_hasExtra)
            m_box->removeItem(0);
        m_hasExtra = !text.isNull();
        if (m_hasExtra)
            m_box->insertItem(0, text);
    }

    void setReason(const QString& reason)
    {
        if (m_reason == reason)
            return;
        m_reason = reason;
        m_colours->setStyleSheet(
            reason.isEmpty() ? QString() : QStringLiteral("QComboBox { color: red; }"));
    }

    ChoiceBox* const m_box;
    ReadableColours* const m_colours;
    const PropertySelection::Row& m_row;
    bool m_hasExtra = false;
    int m_place = -1; ///< Of what is shown, without the extra one.
    QString m_reason;
};

} // namespace

RowEditor* makeChoiceEditor(QWidget* parent, const PropertySelection::Row& row)
{
    return new ChoiceRowEditor(parent, row);
}

} // namespace vrn::qt::detail
