#include <vrn/qt/align_fields.h>

#include <vrn/assert/smart_assert.h>
#include <vrn/companion_qt/label.h>

#include <QBoxLayout>
#include <QComboBox>
#include <QEvent>
#include <QLineEdit>
#include <QPointer>

#include "controls/parts/typed_into_p.h"

#include <algorithm>

namespace vrn::qt {
namespace {

// The controls use this file, so it knows them only by the names of their classes.
bool isControl(const QWidget* widget)
{
    return widget->inherits("vrn::qt::SimpleLineEdit")
        || widget->inherits("vrn::qt::MultiEditFilePicker");
}

// A file picker has a line edit, which has margins, too.
void removeMargins(QWidget* field)
{
    for (; field && isControl(field); field = field->focusProxy()) {
        if (field->layout())
            field->layout()->setContentsMargins(0, 0, 0, 0);
    }
}

bool isInRow(const QWidget* control)
{
    const auto* layout = qobject_cast<QBoxLayout*>(control->layout());
    return layout && layout->direction() <= QBoxLayout::RightToLeft;
}

// A unit is a label of the control too, but not a caption.
QWidget* captionOf(const QWidget* field)
{
    if (!isInRow(field))
        return nullptr;
    const auto labels = field->findChildren<VRN_QT_Label*>(QString(), Qt::FindDirectChildrenOnly);
    const auto it = std::find_if(
        labels.begin(), labels.end(), [](const auto* label) { return label->buddy(); });
    return it == labels.end() ? nullptr : *it;
}

// The part of a field that has the height of a line of text, or null.
QWidget* lineOf(QWidget* field)
{
    QWidget* part = detail::typedInto(field);
    const bool isLine = qobject_cast<QLineEdit*>(part) || qobject_cast<QComboBox*>(part);
    return isLine && part->maximumHeight() == QWIDGETSIZE_MAX ? part : nullptr;
}

class FieldAlignment : public QObject
{
public:
    FieldAlignment(QObject* owner, const std::vector<QWidget*>& fields)
        : QObject(owner)
        , m_fields(fields.begin(), fields.end())
    {
        for (QWidget* field : fields) {
            removeMargins(field);
            field->installEventFilter(this);
        }
        align();
    }

protected:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        switch (event->type()) {
        case QEvent::FontChange:
        case QEvent::LayoutRequest:
        case QEvent::Polish:
        case QEvent::StyleChange:
            align();
            break;
        default:
            break;
        }
        return false;
    }

private:
    void align()
    {
        const int captionWidth = largest(&captionOf, &QSize::width);
        const int lineHeight = largest(&lineOf, &QSize::height);
        for (QWidget* field : m_fields) {
            if (!field)
                continue;
            if (QWidget* caption = captionOf(field))
                setCaptionWidth(*caption, captionWidth);
            if (lineOf(field))
                setLineHeight(field, lineHeight);
        }
        m_captionWidth = captionWidth;
        m_lineHeight = lineHeight;
    }

    // What the application, or another alignment, has made wider stays so.
    void setCaptionWidth(QWidget& caption, int width) const
    {
        if (caption.minimumWidth() <= std::max(m_captionWidth, width))
            caption.setMinimumWidth(width);
    }

    // A control has the height of its edit, but ignores the minimum height of its edit.
    // A field that the application has made higher stays so.
    void setLineHeight(QWidget* field, int height) const
    {
        const QWidget* line = lineOf(field);
        for (QWidget* part = field; part; part = part->focusProxy()) {
            const bool isOurs = part->minimumHeight() <= std::max(m_lineHeight, height);
            if (isOurs && (part == line || isControl(part)))
                part->setMinimumHeight(height);
        }
    }

    template <typename Part>
    int largest(Part partOf, int (QSize::*extent)() const) const
    {
        int result = 0;
        for (QWidget* field : m_fields) {
            if (const QWidget* part = field ? partOf(field) : nullptr)
                result = std::max(result, (part->sizeHint().*extent)());
        }
        return result;
    }

    std::vector<QPointer<QWidget>> m_fields;
    int m_captionWidth = 0;
    int m_lineHeight = 0;
};

} // namespace

void alignFields(QObject* owner, const std::vector<QWidget*>& fields)
{
    VRN_ASSERT(owner);
    const bool isComplete = std::find(fields.begin(), fields.end(), nullptr) == fields.end();
    VRN_ASSERT_MESSAGE(isComplete, "a field is missing");
    if (owner && isComplete)
        new FieldAlignment(owner, fields);
}

} // namespace vrn::qt
