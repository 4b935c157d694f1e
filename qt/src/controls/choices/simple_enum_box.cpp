#include <vrn/qt/simple_enum_box.h>

#include <vrn/assert/smart_assert.h>
#include <vrn/companion_qt/combo_box.h>
#include <vrn/companion_qt/connect.h>
#include <vrn/companion_qt/label.h>
#include <vrn/qt/multi_edit_line_edit.h>

#include <QAbstractItemView>
#include <QEvent>
#include <QHBoxLayout>
#include <QIcon>
#include <QLineEdit>

#include "controls/parts/alive_p.h"
#include "controls/parts/mnemonic_p.h"
#include "controls/parts/no_flags_p.h"
#include "controls/parts/readable_colours_p.h"
#include "controls/parts/run_both_p.h"
#include "controls/parts/spare_p.h"

#include <algorithm>
#include <utility>

namespace vrn::qt {
namespace {

using detail::noFlags;

// The list takes the spare room, not the caption.
constexpr int stretchOfList = 1;

// For the edit of a box without a validator. Any text is allowed there, but only the name
// of an entry has a value.
struct AnyTextValidator : public IValidator
{
    bool validate(const QString& text, boost::any& value, const std::bitset<32>&) override
    {
        value = text;
        return true;
    }

    QString reformat(const boost::any& value, const std::bitset<32>&) override
    {
        const auto* text = boost::any_cast<QString>(&value);
        VRN_ASSERT(text);
        return text ? *text : QString();
    }
};

int rowOf(const NamedValueList& values, const NamedValueList::const_iterator& entry)
{
    return static_cast<int>(entry - values.begin());
}

constexpr int opaque = 255;

// On the colour of a row, the colour of the list's text may not be readable. What is seen of
// a colour that is not opaque depends on the list, too.
void chooseTextColour(QComboBox& combo, int row)
{
    QColor ground = combo.itemData(row, Qt::BackgroundRole).value<QColor>();
    if (ground.alpha() < opaque)
        ground = detail::laidOver(ground, combo.view()->palette().color(QPalette::Base));
    combo.setItemData(row, detail::readableOn(ground), Qt::ForegroundRole);
}

} // namespace

SimpleEnumBox* SimpleEnumBox::create(
    QWidget* parent, const QString& name, bool (*const& eqFn)(const boost::any&, const boost::any&))
{
    VRN_ASSERT(parent);
    return parent ? new SimpleEnumBox(parent, name, eqFn) : nullptr;
}

SimpleEnumBox::SimpleEnumBox(
    QWidget* parent, const QString& name, bool (*eqFn)(const boost::any&, const boost::any&))
    : QWidget(parent)
    , m_combo(new VRN_QT4_ComboBox(this))
    , m_eq(eqFn)
{
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    if (!name.isEmpty()) {
        auto* label = new VRN_QT_Label(Qt::PlainText, name, this);
        label->setBuddy(m_combo);
        m_combo->setAccessibleName(detail::withoutMnemonic(name));
        layout->addWidget(label);
    }
    m_combo->setSorting(false);
    m_combo->setEditable(false);
    m_combo->setDuplicatesEnabled(false);
    m_combo->setWidthTextEnabled(true);
    layout->addWidget(m_combo, stretchOfList);
    // Without the focus on the wheel, which a QComboBox has.
    m_combo->setFocusPolicy(Qt::StrongFocus);
    m_combo->installEventFilter(this);
    setFocusProxy(m_combo);
    setFocusPolicy(m_combo->focusPolicy());
    vrn_connect(m_combo.data(), &QComboBox::textActivated, this, [this](const QString& text) {
        const detail::Alive alive(this, m_combo);
        onItemActivated(text);
    });
    vrn_connect(
        m_combo.data(), &QComboBox::editTextChanged, this, [this] { m_hasNoValue = false; });
}

SimpleEnumBox::~SimpleEnumBox()
{
    dropLineEdit();
    detail::disposeOf(m_combo);
}

VRN_QT4_ComboBox& SimpleEnumBox::combo()
{
    VRN_ASSERT(m_combo);
    return m_combo ? *m_combo : detail::spare<VRN_QT4_ComboBox>(nullptr);
}

void SimpleEnumBox::resize(int width, int height)
{
    QWidget::resize(width, height);
}

void SimpleEnumBox::setSizeAdjustPolicy(QComboBox::SizeAdjustPolicy policy)
{
    combo().setSizeAdjustPolicy(policy);
}

void SimpleEnumBox::setValues(const NamedValueList& values, const PixmapPtrList& pixmaps,
    const std::deque<QColor>& backgroundColors)
{
    VRN_QT4_ComboBox& combo = this->combo();
    const detail::Alive alive(this, m_combo);
    m_values = values;
    if (pixmaps.empty())
        combo.setWidthTextEnabled(true);
    else
        combo.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);

    QSize iconSize(0, 0);
    combo.clear();
    combo.setInsertPolicy(QComboBox::InsertAtBottom);
    for (std::size_t i = 0; alive && i < m_values.size(); ++i) {
        QIcon icon;
        if (i < pixmaps.size() && pixmaps[i]) {
            icon = QIcon(*pixmaps[i]);
            iconSize = iconSize.expandedTo(pixmaps[i]->size());
        }
        combo.insertItem(combo.count(), icon, m_values[i].first);
        if (i < backgroundColors.size()) {
            combo.setItemData(static_cast<int>(i), backgroundColors[i], Qt::BackgroundRole);
            chooseTextColour(combo, static_cast<int>(i));
            if (backgroundColors[i].alpha() < opaque)
                combo.view()->installEventFilter(this);
        }
    }
    if (alive && !m_values.empty())
        combo.setCurrentIndex(0);
    if (!pixmaps.empty() && !iconSize.isNull())
        combo.setIconSize(iconSize);
    combo.setMinimumWidth(combo.sizeHint().width());
}

bool SimpleEnumBox::anyEq(const boost::any& a, const boost::any& b) const
{
    VRN_ASSERT(m_eq != 0); // NOLINT(modernize-use-nullptr): the text of the report
    if (a.empty() != b.empty())
        return false;
    return m_eq && m_eq(a, b);
}

void SimpleEnumBox::selectByName(const QString& name)
{
    VRN_QT4_ComboBox& combo = this->combo();
    const auto entry = std::find_if(m_values.begin(), m_values.end(),
        [&](const auto& candidate) { return candidate.first == name; });
    if (entry == m_values.end())
        return;
    const detail::Alive alive(this, m_combo);
    combo.setCurrentIndex(rowOf(m_values, entry));
    if (!alive)
        return;
    m_hasNoValue = false;
    onSelected();
}

void SimpleEnumBox::selectByValue(const boost::any& value)
{
    VRN_QT4_ComboBox& combo = this->combo();
    if (!m_combo)
        return;
    VRN_ASSERT(m_combo->isEditable() || !m_values.empty());
    const auto entry = std::find_if(m_values.begin(), m_values.end(),
        [&](const auto& candidate) { return anyEq(candidate.second, value); });
    const bool found = entry != m_values.end();
    const detail::Alive alive(this, m_combo);
    if (found) {
        const QString name = entry->first;
        combo.setCurrentIndex(rowOf(m_values, entry));
        if (combo.isEditable())
            combo.lineEdit()->setText(name);
    } else if (combo.isEditable()) {
        VRN_ASSERT(m_validator);
        if (!m_validator)
            return;
        combo.lineEdit()->setText(written(value));
    } else {
        VRN_ASSERT_MESSAGE(found, "Value not found");
        return;
    }
    if (!alive)
        return;
    m_hasNoValue = false;
    onSelected();
}

// If the validator throws, the box is left without a value.
QString SimpleEnumBox::written(const boost::any& value)
{
    const IValidator::pointer validator = m_validator; // It may replace m_validator.
    try {
        return validator->reformat(value, noFlags);
    } catch (...) {
        combo().clearEditText();
        m_hasNoValue = true;
        throw;
    }
}

boost::any SimpleEnumBox::getSelectedValue() const
{
    if (m_values.empty())
        return boost::any();
    VRN_ASSERT(m_combo);
    if (!m_combo)
        return boost::any();

    if (isEditable()) {
        if (m_hasNoValue)
            return boost::any();
        const QString text = m_combo->lineEdit()->text();
        boost::any value = getValueForName(text);
        const IValidator::pointer validator = m_validator; // As in written().
        if (!value.empty() || !validator)
            return value;
        return validator->validate(text, value, noFlags) ? value : boost::any();
    }

    const boost::any* value = valueOfRow();
    return value ? *value : boost::any();
}

// Points to the value of the current row; null if it has none.
const boost::any* SimpleEnumBox::valueOfRow() const
{
    const int i = m_combo->currentIndex();
    VRN_ASSERT(i >= 0 && i < m_combo->count())("i", i)("count", m_combo->count());
    // The rows after the values have no value: the various entry, and texts that were
    // entered while the box was editable.
    const bool isValue = i >= 0 && static_cast<std::size_t>(i) < m_values.size();
    return isValue ? &m_values[static_cast<std::size_t>(i)].second : nullptr;
}

// This is asked for each object of a selection, and copying the value would cost more than
// comparing it.
bool SimpleEnumBox::isSelected(const boost::any& value) const
{
    if (!m_combo || m_combo->isEditable() || m_values.empty())
        return anyEq(value, getSelectedValue());
    const boost::any* shown = valueOfRow();
    return shown ? anyEq(value, *shown) : anyEq(value, boost::any());
}

QString SimpleEnumBox::getNameForValue(const boost::any& value) const
{
    for (const auto& [name, candidate] : m_values) {
        if (anyEq(candidate, value))
            return name;
    }
    const IValidator::pointer validator = m_validator; // As in written().
    return isEditable() && validator ? validator->reformat(value, noFlags) : QString();
}

boost::any SimpleEnumBox::getValueForName(const QString& name) const
{
    VRN_ASSERT(m_combo);
    for (const auto& [candidate, value] : m_values) {
        if (candidate == name)
            return value;
    }
    return boost::any();
}

void SimpleEnumBox::next()
{
    VRN_QT4_ComboBox& combo = this->combo();
    if (combo.currentIndex() >= combo.count() - 1)
        return;
    const detail::Alive alive(this, m_combo);
    combo.setCurrentIndex(combo.currentIndex() + 1);
    if (alive)
        Q_EMIT valueChanged();
}

void SimpleEnumBox::previous()
{
    VRN_QT4_ComboBox& combo = this->combo();
    if (combo.currentIndex() < 1)
        return;
    const detail::Alive alive(this, m_combo);
    combo.setCurrentIndex(combo.currentIndex() - 1);
    if (alive)
        Q_EMIT valueChanged();
}

bool SimpleEnumBox::isEditable() const
{
    return m_combo && m_combo->isEditable();
}

void SimpleEnumBox::setEditable(bool editable, IValidator::pointer validator)
{
    m_validator = std::move(validator);
    combo().setEditable(editable);
    if (!m_combo)
        return;
    if (!editable) {
        dropLineEdit();
        return;
    }
    if (!hasLineEdit())
        makeLineEdit();
    // Not a unique connection: each call makes an entered text emit once more.
    vrn_connect(
        m_lineEdit.data(), &SimpleLineEdit::valueChanged, this, &SimpleEnumBox::onEditingFinished);
    ++m_timesMadeEditable;
}

// The combo box destroys its edit when it stops being editable, and creates another one
// when it becomes editable again.
bool SimpleEnumBox::hasLineEdit() const
{
    return m_lineEdit && m_edit && m_edit == m_combo->lineEdit();
}

// The control around the edit is a hidden child of the parent.
void SimpleEnumBox::makeLineEdit()
{
    dropLineEdit();
    const auto validator = m_validator ? m_validator : IValidator::pointer(new AnyTextValidator);
    m_lineEdit = MultiEditLineEdit::create(
        parentWidget(), QString(), validator, 0, ExpandHorizontal);
    m_lineEdit->hide();
    m_lineEdit->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_edit = m_lineEdit->edit();
    m_combo->setLineEdit(m_edit);
    m_hasNoValue = false;
    vrn_connect(m_edit.data(), &QLineEdit::textEdited, this, &SimpleEnumBox::onTextEdited);
    // The control is of no use once the edit is destroyed, for whatever reason.
    vrn_connect(m_edit.data(), &QObject::destroyed, m_lineEdit.data(), &QObject::deleteLater);
    // The new control gets as many connections as the previous one had.
    for (int i = 0; i < m_timesMadeEditable; ++i) {
        vrn_connect(m_lineEdit.data(), &SimpleLineEdit::valueChanged, this,
            &SimpleEnumBox::onEditingFinished);
    }
}

// Deleted later, because the signal being handled may be its own, and because a program
// may be deleting a list of the parent's children one by one.
void SimpleEnumBox::dropLineEdit()
{
    if (!m_lineEdit)
        return;
    m_lineEdit->disconnect(this);
    if (m_edit) // The combo box is still connected to it, though it is no longer shown.
        m_edit->disconnect(m_combo);
    if (m_lineEdit->parent())
        m_lineEdit->deleteLater();
    else
        detail::disposeOf(m_lineEdit);
    m_lineEdit = nullptr;
}

// The wheel scrolls the form under a list that has not the focus. Its edit ignores the wheel,
// so this list gets it from there, too.
bool SimpleEnumBox::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Wheel && watched == m_combo && !m_combo->hasFocus()) {
        event->ignore();
        return true;
    }
    const bool paletteMayBeNew = event->type() == QEvent::PaletteChange
        || event->type() == QEvent::Show;
    if (paletteMayBeNew && qobject_cast<QAbstractItemView*>(watched))
        chooseTextColours();
    return QWidget::eventFilter(watched, event);
}

void SimpleEnumBox::chooseTextColours()
{
    const detail::Alive alive(this, m_combo);
    for (int row = 0; alive && row < m_combo->count(); ++row) {
        const QVariant colour = m_combo->itemData(row, Qt::BackgroundRole);
        if (colour.isValid() && colour.value<QColor>().alpha() < opaque)
            chooseTextColour(*m_combo, row);
    }
}

void SimpleEnumBox::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::ParentChange && m_lineEdit) {
        m_lineEdit->setParent(parentWidget());
        m_lineEdit->hide();
    }
}

bool SimpleEnumBox::isValueValid() const
{
    VRN_ASSERT(m_lineEdit);
    return m_lineEdit && m_lineEdit->isValueValid();
}

void SimpleEnumBox::onEditingFinished()
{
    VRN_QT4_ComboBox& combo = this->combo();
    if (!m_validator || !m_lineEdit || !combo.isEditable())
        return;
    if (combo.getCurrentId() == VRN_QT4_ComboBox::getVariousId())
        return;
    const QString text = combo.lineEdit()->text();
    // For the text of an entry the combo box emits its own signal.
    if (!getValueForName(text).empty())
        return;
    const detail::Alive alive(this, m_combo);
    detail::runBoth([&] { m_lineEdit->onTextEdited(text); },
        [&] {
            if (alive)
                Q_EMIT valueChanged();
        });
}

void SimpleEnumBox::addWidget(QWidget* w)
{
    VRN_ASSERT(w);
    VRN_ASSERT(layout());
    if (w && layout())
        layout()->addWidget(w);
}

int SimpleEnumBox::getComboWidth() const
{
    VRN_ASSERT(m_combo);
    return m_combo ? m_combo->width() : 0;
}

void SimpleEnumBox::onItemActivated(const QString& /*text*/)
{
    const detail::Alive alive(this, m_combo);
    Q_EMIT valueChanged();
}

void SimpleEnumBox::onSelected() {}

void SimpleEnumBox::onTextEdited(const QString& /*text*/) {}

} // namespace vrn::qt
