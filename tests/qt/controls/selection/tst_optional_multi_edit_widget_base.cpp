#include <vrn/qt/optional_multi_edit_widget_base.h>

#include "support/test_main.h"
#include "support/test_object.h"

#include <QMetaMethod>
#include <QSignalSpy>

using vrn::qt::OptionalMultiEditWidgetBase;

class TestOptionalMultiEditWidgetBase : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void itIsAWidgetWithOneSignalAndNothingElse()
    {
        const QMetaObject& meta = OptionalMultiEditWidgetBase::staticMetaObject;
        QCOMPARE(meta.superClass(), &QWidget::staticMetaObject);
        QCOMPARE(meta.methodCount() - meta.methodOffset(), 1);
        const QMetaMethod method = meta.method(meta.methodOffset());
        QCOMPARE(method.methodSignature(), QByteArray("valueChanged()"));
        QCOMPARE(method.methodType(), QMetaMethod::Signal);
    }

    void itBelongsToItsParent()
    {
        QWidget parent;
        const auto* widget = new OptionalMultiEditWidgetBase(&parent);
        QCOMPARE(widget->parentWidget(), &parent);
    }

    void derivedClassesSendTheSignal()
    {
        struct Composite : public OptionalMultiEditWidgetBase
        {
            Composite()
                : OptionalMultiEditWidgetBase(nullptr)
            {}
            void change() { Q_EMIT valueChanged(); }
        };
        Composite composite;
        QSignalSpy valueChanged(
            static_cast<OptionalMultiEditWidgetBase*>(&composite), &Composite::valueChanged);
        composite.change();
        QCOMPARE(valueChanged.count(), 1);
    }
};

VRN_TEST(TestOptionalMultiEditWidgetBase)
#include "tst_optional_multi_edit_widget_base.moc"
