#include <vrn/qt/hints.h>

#include "factory_fixture.h"
#include "support/table.h"
#include "support/test_main.h"

using namespace vrn::qt;
using namespace vrn::test;
using namespace std::string_literals;

namespace {

using Write = std::function<void(Hints&)>;
using Read = std::function<QString(const Hints&)>;

// Each reads "validator.limit".
template <typename T>
Read found()
{
    return [](const Hints& hints) {
        const T* value = findHint<T>(hints, "validator.limit");
        return value ? describe(boost::any(*value)) : QStringLiteral("none");
    };
}

template <typename T>
Read read(const T& missing = T())
{
    return [missing](const Hints& hints) {
        return describe(boost::any(readHint<T>(hints, "validator.limit", missing)));
    };
}

template <typename T>
Read required()
{
    return [](const Hints& hints) {
        return describe(boost::any(requireHint<T>(hints, "validator.limit")));
    };
}

bool equalInts(const boost::any& a, const boost::any& b)
{
    return sameValue(a, b);
}

} // namespace

Q_DECLARE_METATYPE(Read)
Q_DECLARE_METATYPE(Write)

class TestHints : public HintsTest
{
    Q_OBJECT

private Q_SLOTS:
    void whatIsRead_data()
    {
        columns<HintList, Read, QString>("hints", "read", "result");
        const HintList none;
        const HintList other = {{"validator.other", 1}};
        const HintList elsewhere = {{"limit", 1}, {"validator", 2}};
        const HintList five = {{"validator.limit", 5}};
        const QString badPath = "ptree_bad_path: No such node (validator.limit)";
        row("found", five, found<int>(), "int 5");
        row("found: a false is a value", HintList{{"validator.limit", false}}, found<bool>(),
            "bool false");
        row("found: nothing in an empty tree", none, found<int>(), "none");
        row("found: nothing in a branch without the key", other, found<int>(), "none");
        row("found: only at the whole path", elsewhere, found<int>(), "none");
        row("found: unknown keys do not matter",
            HintList{{"validator.limit", 5}, {"validator.limit.more", "s"s}, {"colour", 1.5}},
            found<int>(), "int 5");
        row("read", five, read<int>(9), "int 5");
        row("read: the value for a missing one", other, read<int>(9), "int 9");
        row("read: a missing one is zero, false or empty unless told", other, read<std::string>(),
            "std::string \"\"");
        row("required", five, required<int>(), "int 5");
        row("required: missing", other, required<int>(), badPath);
        row("required: the branch is missing", none, required<int>(), badPath);
    }
    void whatIsRead()
    {
        QFETCH(HintList, hints);
        QFETCH(Read, read);
        QTEST(outcome([&] { return read(hintsOf(hints)); }), "result");
    }

    void anotherTypeIsReportedAndThrows_data()
    {
        columns<boost::any, Read, QString, QString>("hint", "read", "type", "asked");
        row("found: an int is no unsigned int", boost::any(5), found<unsigned int>(), "int",
            "unsigned int");
        row("found: an int is no unsigned short", boost::any(5), found<unsigned short>(), "int",
            "unsigned short");
        row("found: an int is no double", boost::any(5), found<double>(), "int", "double");
        row("found: an int is no bool", boost::any(1), found<bool>(), "int", "bool");
        row("found: a literal is no text", boost::any("text"), found<QString>(), "char const*",
            "QString");
        row("found: a node has no value", boost::any(), found<int>(), "void", "int");
        row("read: no default for another type", boost::any(5L), read<int>(9), "long", "int");
        row("required", boost::any(5.0), required<int>(), "double", "int");
    }
    void anotherTypeIsReportedAndThrows()
    {
        QFETCH(boost::any, hint);
        QFETCH(Read, read);
        expectWrongHint();
        QCOMPARE(outcome([&] { return read(hintsOf({{"validator.limit", hint}})); }), wrongType);
        QCOMPARE(reported("path"), "validator.limit"s);
        QTEST(QString::fromStdString(reported("found")), "type");
        QTEST(QString::fromStdString(reported("asked")), "asked");
    }

    void whatIsWrittenHasTheTypeThatIsNamed_data()
    {
        columns<Write, Read, QString>("write", "read", "result");
        const auto value = [](auto store) {
            return Write([store](Hints& hints) { store(hints, "validator.limit"); });
        };
        row("a double from an int",
            value([](Hints& h, const char* path) { setHint<double>(h, path, 5); }), found<double>(),
            "double 5");
        row("an unsigned short from an int",
            value([](Hints& h, const char* path) { setHint<unsigned short>(h, path, 5); }),
            found<unsigned short>(), "unsigned short 5");
        row("a std::string from a literal",
            value([](Hints& h, const char* path) { setHint<std::string>(h, path, "text"); }),
            found<std::string>(), "std::string \"text\"");
        row("a text from a literal",
            value([](Hints& h, const char* path) { setTextHint(h, path, "text"); }),
            found<std::string>(), "std::string \"text\"");
        row("the last one counts, whatever the type before", value([](Hints& h, const char* path) {
            setHint<int>(h, path, 5);
            setHint<double>(h, path, 1.5);
        }),
            found<double>(), "double 1.5");
        row("what is below stays", value([](Hints& h, const char* path) {
            setHint<int>(h, path, 5);
            setHint<int>(h, "validator", 6);
        }),
            found<int>(), "int 5");
    }
    void whatIsWrittenHasTheTypeThatIsNamed()
    {
        QFETCH(Write, write);
        QFETCH(Read, read);
        Hints hints;
        write(hints);
        QTEST(read(hints), "result");
    }

    void functionsAreWrittenAsTheTypeThatIsRead()
    {
        Hints hints;
        setEqualHint(hints, "equal", equalInts);
        setEqualHint(
            hints, "equal by lambda", [](const boost::any&, const boost::any&) { return true; });
        setDefaultTextHint(hints, "text", [](const QString& text) { return text + "!"; });
        setResetHint(hints, "reset", [](int id, boost::any& shown, boost::any&) { shown = id; });
        setEditHint(hints, "edit", [](QWidget*, boost::any& value) {
            value = 7;
            return true;
        });

        QVERIFY(requireHint<EqualHint>(hints, "equal") == &equalInts);
        QVERIFY(requireHint<EqualHint>(hints, "equal by lambda")(1, 2));
        QCOMPARE(requireHint<DefaultTextHint>(hints, "text")("a"), QString("a!"));
        boost::any value;
        boost::any reported;
        requireHint<ResetHint>(hints, "reset")(5, value, reported);
        QCOMPARE(value, boost::any(5));
        QVERIFY(requireHint<EditHint>(hints, "edit")(nullptr, value));
        QCOMPARE(value, boost::any(7));
    }

    void theTypesOfFunctionsAreThoseThatAreDocumented()
    {
        static_assert(std::is_same_v<EqualHint, bool (*)(boost::any const&, boost::any const&)>);
        static_assert(std::is_same_v<DefaultTextHint, boost::function<QString(QString const&)>>);
        static_assert(
            std::is_same_v<ResetHint, std::function<void(int, boost::any&, boost::any&)>>);
        static_assert(std::is_same_v<EditHint, std::function<bool(QWidget*, boost::any&)>>);
    }
};

VRN_TEST(TestHints)
#include "tst_hints.moc"
