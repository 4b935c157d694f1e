#include "support/samples/sample.h"
#include "support/test_main.h"
#include "support/test_object.h"

class OwnApplication : public QApplication
{
    Q_OBJECT

public:
    using QApplication::QApplication;
};

class SampleFails : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void thisOne() { QVERIFY(qobject_cast<OwnApplication*>(qApp)); }
    void thatOne() { QVERIFY(false); }
    void anotherOne() { QVERIFY(false); }
};

VRN_TEST_IN(SampleFails, OwnApplication)
#include "sample_fails.moc"
