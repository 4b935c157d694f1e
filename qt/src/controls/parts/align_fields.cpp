#include <vrn/qt/align_fields.h>

#include <vrn/assert/smart_assert.h>
#include <vrn/companion_qt/label.h>

#include <QBoxLayout>
#include <QComboBox>
#include <QEvent>
#include <QLineEdit>
#include <QPointer>

#include <algorithm>

namespace vrn::qt {
namespace {

// The controls use this file, so it knows them only by the names of their classes.
bool hasOwnMargins(const QWidget* widget)
{
    return widget->inherits("vrn::qt::SimpleLineEdit")
        || widget->inherits("vrn::qt::MultiEditFilePicker");
}

// A file picker has a line edit, which has margins, too.
void removeMargins(QWidget* field)
{
    for (; field && hasOwnMargins(field); field = field->focusProxy()) {
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

// The part of a field that has the height of a line of text. Null if the application has
// limited the height of the field.
QWidget* lineOf(QWidget* field)
{
    QWidget* part = field;
    while (part->focusProxy() && part->maximumHeight() == QWIDGETSIZE_MAX)
        part = part->focusProxy();
    const bool isLine = qobject_cast<QLineEdit*>(part) || qobject_cast<QComboBox*>(part);
    return isLine && part->maximumHeight() == QWIDGETSIZE_MAX ? part : nullptr;
}

/// What a column of fields has in common.
struct Measure
{
    int captionWidth = 0;
    int lineHeight = 0;

    bool operator==(const Measure& other) const
    {
        return captionWidth == other.captionWidth && lineHeight == other.lineHeight;
    }
};

Measure measureOf(QWidget* field)
{
    const bool isTakenOut = field->isHidden()
        && field->testAttribute(Qt::WA_WState_ExplicitShowHide);
    if (isTakenOut)
        return {};
    const QWidget* caption = captionOf(field);
    const QWidget* line = lineOf(field);
    return {caption ? caption->sizeHint().width() : 0, line ? line->sizeHint().height() : 0};
}

class FieldAlignment : public QObject
{
public:
    FieldAlignment(QObject* owner, const std::vector<QWidget*>& fields)
        : QObject(owner)
    {
        for (QWidget* field : fields) {
            removeMargins(field);
            field->installEventFilter(this);
            m_fields.push_back({field, measureOf(field)});
        }
        align();
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        switch (event->type()) {
        case QEvent::FontChange:
        case QEvent::HideToParent:
        case QEvent::LayoutRequest:
        case QEvent::Polish:
        case QEvent::Show: // While the form is hidden, a layout tells of its first change only.
        case QEvent::ShowToParent:
        case QEvent::StyleChange:
            measureAgain(watched);
            break;
        default:
            break;
        }
        return false;
    }

private:
    struct Field
    {
        QPointer<QWidget> widget;
        Measure measure;
    };

    // In a form of hundreds of fields, each sends several of these events.
    void measureAgain(const QObject* watched)
    {
        const auto field = std::find_if(m_fields.begin(), m_fields.end(),
            [watched](const Field& each) { return each.widget == watched; });
        if (field == m_fields.end())
            return;
        field->measure = measureOf(field->widget);
        if (largest() == m_shown)
            apply(field->widget, m_shown);
        else
            align();
    }

    void align()
    {
        const Measure measure = largest();
        for (const Field& field : m_fields) {
            if (field.widget)
                apply(field.widget, measure);
        }
        m_shown = measure;
    }

    Measure largest() const
    {
        Measure result;
        for (const Field& field : m_fields) {
            if (!field.widget)
                continue;
            result.captionWidth = std::max(result.captionWidth, field.measure.captionWidth);
            result.lineHeight = std::max(result.lineHeight, field.measure.lineHeight);
        }
        return result;
    }

    // What the application, or another alignment, has made larger stays so.
    void apply(QWidget* field, const Measure& measure) const
    {
        QWidget* caption = captionOf(field);
        if (caption
            && caption->minimumWidth() <= std::max(m_shown.captionWidth, measure.captionWidth))
            caption->setMinimumWidth(measure.captionWidth);

        // A control has the height of its edit, but ignores the minimum height of its edit.
        const QWidget* line = lineOf(field);
        for (QWidget* part = line ? field : nullptr; part; part = part->focusProxy()) {
            const bool isOurs = part->minimumHeight()
                <= std::max(m_shown.lineHeight, measure.lineHeight);
            if (isOurs && (part == line || hasOwnMargins(part)))
                part->setMinimumHeight(measure.lineHeight);
        }
    }

    std::vector<Field> m_fields;
    Measure m_shown;
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
