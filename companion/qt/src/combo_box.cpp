#include <vrn/companion_qt/combo_box.h>

#include <vrn/assert/smart_assert.h>

#include <QKeyEvent>

namespace {

// Neither a row nor Qt's -1 for no row.
constexpr int variousId = -2;

} // namespace

VRN_QT4_ComboBox::VRN_QT4_ComboBox(QWidget* parent, const char* name)
    : QComboBox(parent)
{
    setObjectName(QString::fromUtf8(name));
}

VRN_QT4_ComboBox::~VRN_QT4_ComboBox() = default;

void VRN_QT4_ComboBox::setSorting(bool sorting)
{
    VRN_ASSERT_MESSAGE(!sorting, "entries stay in the order in which they come");
}

void VRN_QT4_ComboBox::setWidthTextEnabled(bool enabled)
{
    setSizeAdjustPolicy(enabled ? AdjustToContents : AdjustToContentsOnFirstShow);
}

void VRN_QT4_ComboBox::addVarious(bool select)
{
    if (!m_various.isValid()) {
        const int row = count();
        // An empty box makes its first entry the current one by itself.
        const int current = currentIndex();
        const QString text = currentText();
        // The same translation as vrn::qt::getVariesString(), which is in a higher layer.
        insertItem(row, QObject::tr("*VARIES*"));
        m_various = model()->index(row, modelColumn(), rootModelIndex());
        if (currentIndex() != current) {
            setCurrentIndex(current);
            if (isEditable())
                setEditText(text);
        }
    }
    if (!select || getCurrentId() == variousId)
        return;
    m_textBefore = currentText();
    if (!isVariousCurrent())
        m_shownBefore = model()->index(currentIndex(), modelColumn(), rootModelIndex());
    setCurrentIndex(m_various.row());
}

void VRN_QT4_ComboBox::removeVarious()
{
    if (!m_various.isValid())
        return;
    // A text that the user has typed over the entry stays.
    const QString text = getCurrentId() == variousId ? m_textBefore : currentText();
    if (isVariousCurrent())
        setCurrentIndex(m_shownBefore.row());
    removeItem(m_various.row());
    if (isEditable())
        setEditText(text);
}

int VRN_QT4_ComboBox::getVariousId()
{
    return variousId;
}

int VRN_QT4_ComboBox::getCurrentId() const
{
    if (!isVariousCurrent())
        return currentIndex();
    return currentText() == itemText(m_various.row()) ? variousId : -1;
}

bool VRN_QT4_ComboBox::isVariousCurrent() const
{
    return m_various.isValid() && currentIndex() == m_various.row();
}

void VRN_QT4_ComboBox::keyPressEvent(QKeyEvent* event)
{
    // With Enter, QComboBox picks the entry whose text is in the edit, but the user has
    // not picked this one.
    const bool enters = event->key() == Qt::Key_Enter || event->key() == Qt::Key_Return;
    if (enters && isEditable() && getCurrentId() == variousId)
        event->ignore();
    else
        QComboBox::keyPressEvent(event);
}
