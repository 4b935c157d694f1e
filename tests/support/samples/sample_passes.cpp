#include "support/samples/sample.h"
#include "support/test_main.h"
#include "support/test_object.h"

class SamplePasses : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void thisOne() { ++samplesRun; }
    void thatOne() { ++samplesRun; }
};

VRN_TEST(SamplePasses)
#include "sample_passes.moc"
