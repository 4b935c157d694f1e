#include <vrn/companion_qt/combo_box.h>

#include <vrn/assert/smart_assert.h>

#include <QKeyEvent>
#include <QLineEdit>

namespace {

// Neither a row nor Qt's -1 for no row.
constexpr int variousId = -2;

// The translation of vrn::qt::getVariesString(), which is up a layer.
QString variousText()
{
    return QObject::tr("*VARIES*");
}

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
        insertItem(row, variousText());
        m_various = model()->index(row, modelColumn(), rootModelIndex());
        if (currentIndex() != current) {
            setCurrentIndex(current);
            if (isEditable())
                setEditText(text);
        }
    }
    if (!select || getCurrentId() == variousId)
        return;
    if (!isVariousCurrent())
        m_shownBefore = model()->index(currentIndex(), modelColumn(), rootModelIndex());
    // The text of the entry itself, typed over another one, tells nothing.
    const bool isTypedOver = currentText() == itemText(m_various.row());
    m_textBefore = isTypedOver ? itemText(m_shownBefore.row()) : currentText();
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

void VRN_QT4_ComboBox::changeEvent(QEvent* event)
{
    QComboBox::changeEvent(event);
    if (event->type() == QEvent::LanguageChange && m_various.isValid())
        translateVarious();
}

void VRN_QT4_ComboBox::translateVarious()
{
    const bool isShown = getCurrentId() == variousId;
    const bool isTypedOver = isVariousCurrent() && !isShown;
    const bool isSelected = isShown && isEditable() && lineEdit()->hasSelectedText();
    const QString typed = currentText();
    setItemText(m_various.row(), variousText()); // Also in the edit, if it is current.
    if (isTypedOver)
        setEditText(typed);
    else if (isSelected)
        lineEdit()->selectAll();
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
