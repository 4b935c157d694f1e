// A validator must convert in both directions.
#include <vrn/qt/i_validator.h>

namespace {

struct OneWay : vrn::qt::IValidator
{
    bool validate(const QString&, boost::any&, const std::bitset<32>&) override { return true; }
#if !MUST_NOT_COMPILE
    QString reformat(const boost::any&, const std::bitset<32>&) override
    {
        return {};
    }
#endif
};

} // namespace

int main()
{
    OneWay validator;
}
