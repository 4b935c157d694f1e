#include <vrn/qt/multi_edit_control_base.h>
#include <vrn/qt/varies_string.h>

#include <QAccessibleWidget>
#include <QCheckBox>
#include <QGroupBox>
#include <QKeySequence>
#include <QPointer>

#include "controls/parts/mnemonic_p.h"
#include "controls/selection/varies_accessible_p.h"

namespace vrn::qt::detail {
namespace {

// A control that is being destroyed is only a QObject here, and does not vary.
bool varies(const QObject* object)
{
    const auto* control = dynamic_cast<const MultiEditControlBase*>(object);
    return control && control->dataVaries();
}

// For a control, or a part of one: its value says when the control varies.
class VariesAccessible : public QAccessibleWidget
{
public:
    VariesAccessible(QWidget* widget, QAccessible::Role role)
        : QAccessibleWidget(widget, role)
    {}

    QString text(QAccessible::Text kind) const override
    {
        if (kind == QAccessible::Value && dataVaries())
            return getVariesString();
        return QAccessibleWidget::text(kind);
    }

protected:
    virtual bool dataVaries() const { return varies(object()); }
};

// Answers as Qt's own interfaces of check boxes and checkable group boxes do. Those cannot
// be derived from.
class CheckableAccessible : public VariesAccessible
{
public:
    explicit CheckableAccessible(QWidget* widget)
        : VariesAccessible(widget, QAccessible::CheckBox)
    {}

    QString text(QAccessible::Text kind) const override
    {
        const QString text = VariesAccessible::text(kind);
        if (!text.isEmpty())
            return text;
        if (kind == QAccessible::Name)
            return withoutMnemonic(caption());
        if (kind == QAccessible::Accelerator)
            return QKeySequence::mnemonic(caption()).toString(QKeySequence::NativeText);
        return text;
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = VariesAccessible::state();
        state.checkable = true;
        state.checkStateMixed = dataVaries();
        state.checked = isChecked() && !dataVaries();
        return state;
    }

    QStringList actionNames() const override
    {
        QStringList names = VariesAccessible::actionNames();
        if (widget()->isEnabled())
            names.prepend(toggleAction());
        return names;
    }

    void doAction(const QString& name) override
    {
        if (name != toggleAction())
            VariesAccessible::doAction(name);
        else if (widget()->isEnabled())
            click();
    }

protected:
    virtual QString caption() const = 0;
    virtual bool isChecked() const = 0;
    // Does what a click of the user does.
    virtual void click() = 0;
};

class CheckBoxAccessible : public CheckableAccessible
{
public:
    explicit CheckBoxAccessible(QCheckBox* box)
        : CheckableAccessible(box)
        , m_box(box)
    {}

protected:
    bool dataVaries() const override { return varies(m_box->parent()); }
    QString caption() const override { return m_box->text(); }
    bool isChecked() const override { return m_box->isChecked(); }
    void click() override { m_box->click(); }

private:
    QCheckBox* m_box;
};

class GroupBoxAccessible : public CheckableAccessible
{
public:
    explicit GroupBoxAccessible(QGroupBox* box)
        : CheckableAccessible(box)
        , m_box(box)
    {}

protected:
    QString caption() const override { return m_box->title(); }
    bool isChecked() const override { return m_box->isChecked(); }

    void click() override
    {
        const QPointer<QGroupBox> alive(m_box);
        m_box->setChecked(!m_box->isChecked());
        if (alive)
            Q_EMIT m_box->clicked(m_box->isChecked());
    }

private:
    QGroupBox* m_box;
};

bool isPartOfCheckBox(const QObject* object)
{
    return object->parent() && object->parent()->inherits("vrn::qt::SimpleCheckBox");
}

// Qt asks for each class of the object, the most derived one first. The controls use this
// file, so it knows them only by the names of their classes.
QAccessibleInterface* createAccessible(const QString& className, QObject* object)
{
    if (className == QLatin1String("QCheckBox") && isPartOfCheckBox(object))
        return new CheckBoxAccessible(static_cast<QCheckBox*>(object));
    if (className == QLatin1String("vrn::qt::MultiEditGroupBox"))
        return new GroupBoxAccessible(static_cast<QGroupBox*>(object));
    if (className == QLatin1String("vrn::qt::SimpleCheckBox"))
        return new VariesAccessible(static_cast<QWidget*>(object), QAccessible::Client);
    if (className == QLatin1String("vrn::qt::SimpleRadioButtonGroup"))
        return new VariesAccessible(static_cast<QWidget*>(object), QAccessible::Grouping);
    return nullptr;
}

} // namespace

void installVariesAccessible()
{
    // Qt ignores a factory that is installed already.
    QAccessible::installFactory(&createAccessible);
}

} // namespace vrn::qt::detail
