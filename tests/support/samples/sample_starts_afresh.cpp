#include "support/samples/sample.h"
#include "support/test_main.h"
#include "support/test_object.h"

class SampleStartsAfresh : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void thisOne() { QCOMPARE(samplesRun++, 0); }
};

VRN_TEST(SampleStartsAfresh)
#include "sample_starts_afresh.moc"
