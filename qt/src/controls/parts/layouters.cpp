#include <vrn/qt/layouters.h>

#include <vrn/assert/smart_assert.h>
#include <vrn/qt/align_fields.h>

#include <QAbstractButton>
#include <QEvent>
#include <QGroupBox>
#include <QLabel>

#include "controls/parts/mnemonic_p.h"
#include "controls/parts/typed_into_p.h"

#include <algorithm>
#include <iterator>
#include <memory>

namespace vrn::qt {
namespace {

// Null if the container is missing or already has a layout: Qt warns of a second one and does
// not take it over.
template <typename Layout>
Layout* createLayout(QWidget* parent)
{
    VRN_ASSERT(parent);
    if (!parent)
        return nullptr;
    auto layout = std::make_unique<Layout>(parent);
    return layout->parent() ? layout.release() : nullptr;
}

template <typename Layout>
Layout* createBox(QWidget* parent)
{
    auto* layout = createLayout<Layout>(parent);
    if (layout) {
        layout->setContentsMargins(4, 4, 4, 4);
        layout->setSpacing(0);
    }
    return layout;
}

// Whether there is something to add, and something to add it to.
bool canAdd(const QLayout* layout, const QWidget* widget)
{
    VRN_ASSERT(layout);
    VRN_ASSERT(widget);
    return layout && widget;
}

void addToBox(QBoxLayout* layout, QWidget* widget)
{
    if (canAdd(layout, widget))
        layout->addWidget(widget, 0);
}

void finishBox(QBoxLayout* layout)
{
    VRN_ASSERT(layout);
    if (layout)
        layout->addStretch(1);
}

} // namespace

ILayouter::ILayouter() = default;
ILayouter::~ILayouter() = default;

void ILayouter::onFinish() {}

VBoxLayouter::VBoxLayouter() = default;
VBoxLayouter::~VBoxLayouter() = default;

void VBoxLayouter::onCreate(QWidget* parent)
{
    m_layout = createBox<QVBoxLayout>(parent);
}

void VBoxLayouter::onAdd(QWidget* widget)
{
    addToBox(m_layout, widget);
}

void VBoxLayouter::onFinish()
{
    finishBox(m_layout);
}

HBoxLayouter::HBoxLayouter() = default;
HBoxLayouter::~HBoxLayouter() = default;

void HBoxLayouter::onCreate(QWidget* parent)
{
    m_layout = createBox<QHBoxLayout>(parent);
}

void HBoxLayouter::onAdd(QWidget* widget)
{
    addToBox(m_layout, widget);
}

void HBoxLayouter::onFinish()
{
    finishBox(m_layout);
}

namespace {

// A QGridLayout makes room for every row and column up to the last one in use.
constexpr int cellLimit = 10000;

bool isCell(int row, int column)
{
    return 0 <= row && row < cellLimit && 0 <= column && column < cellLimit;
}

} // namespace

GridLayouter::GridLayouter(ExpandDirection direction)
    : m_direction(direction)
{}

GridLayouter::~GridLayouter() = default;

void GridLayouter::onCreate(QWidget* parent)
{
    m_layout = createLayout<QGridLayout>(parent);
    if (!m_layout)
        return;
    m_layout->setContentsMargins(4, 4, 4, 4);
    m_layout->setSpacing(4);
}

void GridLayouter::onAdd(QWidget* widget)
{
    if (!canAdd(m_layout, widget))
        return;
    VRN_ASSERT(isCell(m_row, m_column))("m_row", m_row)("m_column", m_column);
    if (!isCell(m_row, m_column))
        return;
    m_layout->addWidget(widget, m_row, m_column);
    int& position = m_direction == ExpandVertical ? m_row : m_column;
    // In 64 bits, as the skip may be any number. A position that leaves the grid stays outside.
    const qint64 next = qint64(position) + m_cellSkip + 1;
    position = int(qBound(qint64(-1), next, qint64(cellLimit)));
}

namespace {

// As high as its editor, so that its text stands beside that of the editor in a row that is
// higher than both.
class Caption : public QLabel
{
public:
    Caption(const QString& text, QWidget* parent, QWidget* editor)
        : QLabel(text, parent)
    {
        setBuddy(editor);
        editor->installEventFilter(this);
    }

    QSize sizeHint() const override
    {
        const QSize own = QLabel::sizeHint();
        const QWidget* editor = buddy();
        const bool isHigher = editor
            && (editor->sizePolicy().expandingDirections() & Qt::Vertical) == 0;
        if (!isHigher)
            return own;
        return own.expandedTo({0, std::max(editor->sizeHint().height(), editor->minimumHeight())});
    }

    // A layout asks for a hint only once, unless it is told that there is another.
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Resize)
            updateGeometry();
        return QLabel::eventFilter(watched, event);
    }
};

// A name would stand in for it.
bool hasText(const QWidget* widget)
{
    if (qobject_cast<const QLabel*>(widget))
        return true;
    const auto* button = qobject_cast<const QAbstractButton*>(widget);
    const auto* box = qobject_cast<const QGroupBox*>(widget);
    return (button && !button->text().isEmpty()) || (box && !box->title().isEmpty());
}

// A buddy has the name of its label, but the part of it that gets the keys has not.
void giveName(QWidget* editor, const QString& name)
{
    QWidget* part = detail::typedInto(editor);
    if (part->accessibleName().isEmpty() && !hasText(part))
        part->setAccessibleName(name);
}

} // namespace

PropertyGridLayouter::PropertyGridLayouter() = default;
PropertyGridLayouter::~PropertyGridLayouter() = default;

void PropertyGridLayouter::onCreate(QWidget* parent)
{
    m_parent = parent;
    m_layout = createLayout<QGridLayout>(parent);
    m_editors.clear();
}

void PropertyGridLayouter::onAdd(QWidget* widget)
{
    if (!canAdd(m_layout, widget))
        return;
    m_editors.emplace_back(widget);
    m_layout->addWidget(widget, m_row, 1);
    ++m_row;
    m_column = 0;
}

void PropertyGridLayouter::onAdd(QWidget* widget, const QString& label)
{
    if (!canAdd(m_layout, widget))
        return;
    auto* caption = new Caption(label, m_parent, widget);
    giveName(widget, detail::withoutMnemonic(label));
    m_editors.emplace_back(widget);
    _add(caption);
    _add(widget);
}

void PropertyGridLayouter::onFinish()
{
    VRN_ASSERT(m_layout);
    if (!m_layout)
        return;
    m_layout->setRowStretch(m_layout->rowCount() - 1, 1);
    m_layout->setColumnStretch(m_layout->columnCount() - 1, 1);
    keepLastRowAtTop();
    std::vector<QWidget*> editors;
    std::copy_if(m_editors.begin(), m_editors.end(), std::back_inserter(editors),
        [](const QWidget* editor) { return editor; });
    m_editors.clear();
    alignFields(m_layout, editors);
}

// The last row gets the spare room, in which a field would stand in the middle.
void PropertyGridLayouter::keepLastRowAtTop()
{
    const int row = m_layout->rowCount() - 1;
    for (int column = 0; column < m_layout->columnCount(); ++column) {
        QLayoutItem* item = m_layout->itemAtPosition(row, column);
        if (item && (item->expandingDirections() & Qt::Vertical) == 0)
            item->setAlignment(item->alignment() | Qt::AlignTop);
    }
}

void PropertyGridLayouter::_add(QWidget* widget)
{
    m_layout->addWidget(widget, m_row, m_column);
    if (++m_column == 2) {
        ++m_row;
        m_column = 0;
    }
}

} // namespace vrn::qt
