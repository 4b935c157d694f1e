#include <vrn/qt/property_error.h>
#include <vrn/qt/property_selection.h>

#include "support/random_seed.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include "beam_model.h"
#include "refusal.h"

#include <QCryptographicHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QUndoStack>

#include <cmath>
#include <limits>
#include <random>

using namespace vrn::qt;
using namespace vrn::test;

namespace {

/// As a file that was written in the format but by hand.
QJsonObject sealed(QJsonObject json)
{
    json.remove("check");
    const QByteArray text = QJsonDocument(json).toJson(QJsonDocument::Compact);
    json["check"] = QString::fromLatin1(
        QCryptographicHash::hash(text, QCryptographicHash::Sha256).toHex());
    return json;
}

QJsonObject withValue(QJsonObject json, const QString& key, const QJsonValue& value)
{
    QJsonObject values = json["values"].toObject();
    values[key] = value;
    json["values"] = values;
    return sealed(json);
}

QJsonObject parsed(const QByteArray& file)
{
    return QJsonDocument::fromJson(file).object();
}

QByteArray written(const QJsonObject& json)
{
    return QJsonDocument(json).toJson();
}

} // namespace

class TestPropertyFile : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void savesWhatIsCommon();
    void loadsWhatWasSaved();
    void keepsEveryBit();
    void keepsEveryText_data();
    void keepsEveryText();
    void keepsEveryTextInWideCharacters_data();
    void keepsEveryTextInWideCharacters();
    void refusesHalfACharacterForUtf8_data();
    void refusesHalfACharacterForUtf8();
    void loadsInOneStep();
    void writesOnlyWhatDiffers();
    void refusesAnotherFile_data();
    void refusesAnotherFile();
    void refusesARefusedValueAsAWhole_data();
    void refusesARefusedValueAsAWhole();
    void refusesWhatTheModelRefuses();
    void refusesOtherObjects();
    void refusesEveryAlteredByte();
    void survivesRandomTrees();
};

void TestPropertyFile::savesWhatIsCommon()
{
    BeamModel model(2);
    model.beams[1].name = "another";
    model.beams[0].width = 10.0 / 3.0;
    model.beams[1].width = 10.0 / 3.0;
    const QJsonObject saved = PropertySelection(&model, model.ids()).save();
    QCOMPARE(saved["format"].toString(), QString("vrn properties"));
    QCOMPARE(saved["version"].toInt(), 1);
    QCOMPARE(saved["kinds"].toArray(), QJsonArray{"beam"});
    const QJsonObject values = saved["values"].toObject();
    QCOMPARE(values.keys().join(' '),
        QString("active bolts camber comment factor grade group length load support width"));
    QCOMPARE(values["width"].toString(), QString("3.3333333333333335"));
    QCOMPARE(values["active"].toString(), QString("true"));
    QCOMPARE(values["support"].toString(), QString("0"));
    QVERIFY(values["load"].isNull());
    QVERIFY(model.writes.isEmpty());
}

void TestPropertyFile::loadsWhatWasSaved()
{
    BeamModel model(3);
    Beam& source = model.beams[0];
    source.length = 10.0 / 3.0;
    source.load = 12.5;
    source.isActive = false;
    source.support = Support::Pinned;
    source.comment = L"from the first";
    source.setCamber(0.01);
    const QByteArray file = written(PropertySelection(&model, {0}).save());
    model.beams[1].group = 5;
    PropertySelection target(&model, {1, 2});
    const PropertyReceipt receipt = target.load(parsed(file));
    QCOMPARE(receipt.text, QString("12 properties: 2 of 2 changed"));
    for (const std::uint64_t key : {1U, 2U}) {
        const Beam& beam = model.beams[key];
        QVERIFY(haveSameBits(beam.length, source.length));
        QCOMPARE(beam.load.value(), 12.5);
        QVERIFY(!beam.isActive && !beam.group && beam.support == Support::Pinned);
        QCOMPARE(beam.comment, source.comment);
        QCOMPARE(beam.name, source.name);
        QCOMPARE(beam.camber(), 0.01);
    }
    QCOMPARE(written(PropertySelection(&model, {1}).save()), file);
}

void TestPropertyFile::keepsEveryBit()
{
    BeamModel model(2);
    std::mt19937_64 random(randomSeed());
    for (int i = 0; i < 2000; ++i) {
        const quint64 bits = random();
        std::memcpy(&model.beams[0].factor, &bits, sizeof(bits));
        if (std::isnan(model.beams[0].factor))
            continue; // cannot be entered
        const QByteArray file = written(PropertySelection(&model, {0}).save());
        PropertySelection(&model, {1}).load(parsed(file));
        QVERIFY(haveSameBits(model.beams[0].factor, model.beams[1].factor));
    }
}

void TestPropertyFile::keepsEveryText_data()
{
    columns<QString>("text");
    row("empty", "");
    row("with line breaks", "a\nb\r\n\tc");
    row("with quotes", "\"\\/'");
    row("with a zero", QString("a") + QChar(0) + "b");
    row("outside the basic plane", QString::fromUtf8("\xf0\x9f\x8f\x97"));
    row("half a surrogate pair", QString("a") + QChar(0xd800) + "b");
    row("a byte that is not UTF-8", QString(QChar(0xdcfc)));
    row("a byte order mark", QString(QChar(0xfeff)) + "a");
    row("what is not a character", QString(QChar(0xffff)));
}

void TestPropertyFile::keepsEveryText()
{
    QFETCH(QString, text);
    BeamModel model(2);
    model.beams[0].name = text;
    const QByteArray file = written(PropertySelection(&model, {0}).save());
    PropertySelection(&model, {1}).load(parsed(file));
    QCOMPARE(model.beams[1].name, text);
}

void TestPropertyFile::keepsEveryTextInWideCharacters_data()
{
    keepsEveryText_data();
}

void TestPropertyFile::keepsEveryTextInWideCharacters()
{
    QFETCH(QString, text);
    BeamModel model(1);
    PropertySelection selection(&model, {0});
    selection.edit("comment", text);
    const QByteArray file = written(selection.save());
    selection.edit("comment", QString("other"));
    selection.load(parsed(file));
    QCOMPARE(selection.read({"comment"}).front().value, boost::any(text));
}

void TestPropertyFile::refusesHalfACharacterForUtf8_data()
{
    columns<QString>("text");
    row("of a pair", QString(QChar(0xd800)));
    row("two bytes of a character", QString(QChar(0xdcc3)) + QChar(0xdca9));
}

void TestPropertyFile::refusesHalfACharacterForUtf8()
{
    QFETCH(QString, text);
    BeamModel model(1);
    PropertySelection selection(&model, {0});
    QCOMPARE(refusal([&] { selection.edit("grade", text); }),
        QString("It has half of a character, which cannot be kept here."));
    QCOMPARE(model.beams[0].grade, std::string("S235"));
}

void TestPropertyFile::loadsInOneStep()
{
    BeamModel model(3);
    model.beams[2].length = 4.0;
    const QJsonObject saved = PropertySelection(&model, {0}).save();
    model.beams[1].length = 5.0;
    model.beams[1].width = 300.0;
    model.beams[1].name = "other";
    QUndoStack stack;
    PropertySelection selection(&model, {1, 2}, &stack);
    selection.load(saved);
    QCOMPARE(model.writes, QStringList{"length of 1 2, name of 1 2, width of 1"});
    QCOMPARE(stack.count(), 1);
    QCOMPARE(stack.undoText(), QString("12 properties of 2 beams"));
    stack.undo();
    QCOMPARE(model.beams[2].length, 4.0);
    QCOMPARE(model.beams[1].length, 5.0);
    QCOMPARE(model.beams[1].width, 300.0);
    QCOMPARE(model.beams[1].name, QString("other"));
}

void TestPropertyFile::writesOnlyWhatDiffers()
{
    BeamModel model(2);
    QUndoStack stack;
    PropertySelection selection(&model, model.ids(), &stack);
    const PropertyReceipt receipt = selection.load(selection.save());
    QCOMPARE(int(receipt.same), 2);
    QVERIFY(model.writes.isEmpty());
    QCOMPARE(stack.count(), 0);
}

void TestPropertyFile::refusesAnotherFile_data()
{
    BeamModel model(1);
    const QJsonObject good = PropertySelection(&model, {0}).save();
    const auto with = [&](const QString& key, const QJsonValue& value) {
        QJsonObject json = good;
        json[key] = value;
        return json;
    };
    const QString damaged = "The file is damaged or was altered.";
    columns<QJsonObject, QString>("file", "reason");
    row("nothing", QJsonObject(), "This is not a file of properties.");
    row("another format", sealed(with("format", "other")), "This is not a file of properties.");
    row("another version", sealed(with("version", 2)), "The file was written by another version.");
    row("a version that is a text", sealed(with("version", "1")),
        "The file was written by another version.");
    row("another check sum", with("check", "0"), damaged);
    row("an altered value", with("values", QJsonObject{{"length", "4"}}), damaged);
    row("more than the format has", sealed(with("comment", "by hand")), damaged);
    row("kinds that are no texts", sealed(with("kinds", QJsonArray{1})), damaged);
    row("kinds that are no array", sealed(with("kinds", "beam")), damaged);
    row("values that are no object", sealed(with("values", QJsonArray{1})), damaged);
    row("a number", withValue(good, "length", 4.0), damaged);
    row("code units without need", withValue(good, "name", QJsonObject{{"utf16", QJsonArray{65}}}),
        damaged);
    row("a code unit out of range",
        withValue(good, "name", QJsonObject{{"utf16", QJsonArray{0xd800, 0x1d800}}}), damaged);
    row("other objects", sealed(with("kinds", QJsonArray{"wall"})),
        "The file is of other objects.");
    row("another property", withValue(good, "height", "4"),
        "The file has another property: height.");
}

void TestPropertyFile::refusesAnotherFile()
{
    QFETCH(QJsonObject, file);
    BeamModel model(2);
    model.beams[0].length = 5.0;
    PropertySelection selection(&model, model.ids());
    QTEST(refusal([&] { selection.load(file); }), "reason");
    QVERIFY(model.writes.isEmpty());
}

void TestPropertyFile::refusesARefusedValueAsAWhole_data()
{
    columns<QString, QJsonValue, QString>("key", "value", "reason");
    row<QString, QJsonValue>(
        "out of range", "length", "50", "Length: It must be between 0.100 m and 40.000 m.");
    row<QString, QJsonValue>("not a number", "length", "much", "Length: \"much\" is not a value.");
    row<QString, QJsonValue>(
        "written in another way", "length", "4.0", "Length: \"4.0\" is not a value.");
    row<QString, QJsonValue>(
        "refused by a check", "bolts", "4", "Bolts: Bolts come in odd numbers.");
    row<QString, QJsonValue>("nothing where a value is needed", "length", QJsonValue::Null,
        "Length: A value is needed.");
    row<QString, QJsonValue>(
        "none of the entries", "support", "2", "Support: It is none of the entries.");
    row<QString, QJsonValue>("what cannot be written", "area", "2", "Area: It cannot be changed.");
}

void TestPropertyFile::refusesARefusedValueAsAWhole()
{
    QFETCH(QString, key);
    QFETCH(QJsonValue, value);
    BeamModel model(2);
    const QJsonObject saved = PropertySelection(&model, {0}).save();
    model.beams[1].name = "other";
    model.beams[1].width = 300.0;
    PropertySelection selection(&model, {1});
    QTEST(refusal([&] { selection.load(withValue(saved, key, value)); }), "reason");
    QVERIFY(model.writes.isEmpty());
}

void TestPropertyFile::refusesWhatTheModelRefuses()
{
    BeamModel model(2);
    const QJsonObject saved = withValue(PropertySelection(&model, {0}).save(), "camber", "-1");
    model.beams[1].width = 300.0;
    model.beams[1].isActive = false;
    QUndoStack stack;
    PropertySelection selection(&model, {1}, &stack);
    QCOMPARE(refusal([&] { selection.load(saved); }), QString("a beam does not sag on purpose"));
    QCOMPARE(model.beams[1].width, 300.0);
    QVERIFY(!model.beams[1].isActive);
    QCOMPARE(stack.count(), 0);
}

void TestPropertyFile::refusesOtherObjects()
{
    BeamModel model(1);
    Beams walls{{0, Beam()}};
    model.addKind(beamProperties("wall"), &walls);
    const QJsonObject both = PropertySelection(&model, {0, {0, 1}}).save();
    PropertySelection beam(&model, {0});
    QCOMPARE(refusal([&] { beam.load(both); }), QString("The file is of other objects."));
    PropertySelection(&model, {0, {0, 1}}).load(both);
}

void TestPropertyFile::refusesEveryAlteredByte()
{
    BeamModel model(2);
    model.beams[0].length = 10.0 / 3.0;
    model.beams[0].comment = L"\x00fc \xd800";
    const QByteArray file = written(PropertySelection(&model, {0}).save());
    PropertySelection target(&model, {1});
    target.load(parsed(file));
    const QJsonObject loaded = target.save();
    std::mt19937 random(randomSeed());
    int refused = 0;
    for (int i = 0; i < 5000; ++i) {
        QByteArray altered = file;
        switch (random() % 3) {
        case 0:
            altered[int(random() % unsigned(altered.size()))] = char(random());
            break;
        case 1:
            altered.remove(int(random() % unsigned(altered.size())), int(random() % 4) + 1);
            break;
        default:
            altered.insert(int(random() % unsigned(altered.size())), char(random()));
        }
        // What is not refused means the same, such as one blank more.
        if (refusal([&] { target.load(parsed(altered)); }).isEmpty())
            QCOMPARE(parsed(altered), parsed(file));
        else
            ++refused;
        QCOMPARE(target.save(), loaded);
    }
    QVERIFY(refused > 1000);
    for (int size = 0; size < file.size() - 2; ++size)
        QVERIFY(!refusal([&] { target.load(parsed(file.left(size))); }).isEmpty());
}

void TestPropertyFile::survivesRandomTrees()
{
    std::mt19937 random(randomSeed());
    const std::function<QJsonValue(int)> tree = [&](int depth) -> QJsonValue {
        static const char* const texts[] = {"format", "version", "kinds", "values", "check",
            "utf16", "length", "vrn properties", "beam", "", "nan:7ff8000000000000", "-0", "1e400"};
        const auto text = [&] { return QString(texts[random() % std::size(texts)]); };
        switch (random() % (depth > 0 ? 6 : 4)) {
        case 0:
            return QJsonValue::Null;
        case 1:
            return double(random()) - 2e9;
        case 2:
            return text();
        case 3:
            return random() % 2 == 0;
        case 4: {
            QJsonArray array;
            for (auto size = random() % 4; size > 0; --size)
                array.append(tree(depth - 1));
            return array;
        }
        default: {
            QJsonObject object;
            for (auto size = random() % 6; size > 0; --size)
                object[text()] = tree(depth - 1);
            return object;
        }
        }
    };
    BeamModel model(1);
    PropertySelection selection(&model, {0});
    const QJsonObject good = selection.save();
    for (int i = 0; i < 5000; ++i) {
        QJsonObject json = tree(3).toObject();
        for (const char* key : {"format", "version", "kinds"}) {
            if (random() % 4 != 0)
                json[key] = good[key];
        }
        if (random() % 2 == 0)
            json["values"] = QJsonObject{{"length", tree(2)}, {"name", tree(2)}};
        const QString reason = refusal([&] { selection.load(sealed(json)); });
        // What is loaded is what would be saved.
        const PropertyState length = selection.read({"length"}).front();
        if (reason.isEmpty() && json["values"].toObject().contains("length")) {
            QCOMPARE(json["values"].toObject()["length"],
                selection.save()["values"].toObject()["length"]);
        }
        QCOMPARE(int(length.kind), int(PropertyState::Common));
    }
    QCOMPARE(model.text(0, "width"), QString("0.200 m"));
}

VRN_TEST(TestPropertyFile)
#include "tst_property_file.moc"
