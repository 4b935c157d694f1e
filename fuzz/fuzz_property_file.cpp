// Loads any JSON as a file of properties. The input is an object whose members take the place of
// those of a good file. The first byte chooses whether the file gets the right check sum after
// that. What is refused must have changed nothing. What is loaded must be saved as the same
// values, and undone as a whole.

#include <vrn/assert/smart_assert.h>
#include <vrn/qt/object_model.h>
#include <vrn/qt/property_error.h>
#include <vrn/qt/property_selection.h>

#include "beams.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QJsonDocument>
#include <QUndoStack>

#include <cstdio>
#include <cstdlib>

using namespace vrn::qt;
using vrn::test::Beam;

namespace {

const QLatin1String checkKey("check");
const QLatin1String valuesKey("values");

QByteArray textOf(const QJsonObject& json)
{
    return QJsonDocument(json).toJson(QJsonDocument::Compact);
}

void require(bool holds, const char* what, const QJsonObject& file)
{
    if (holds)
        return;
    std::fprintf(stderr, "%s: %s\n", what, textOf(file).constData());
    std::abort();
}

void setCheck(QJsonObject& file)
{
    file.remove(checkKey);
    const QByteArray sum = QCryptographicHash::hash(textOf(file), QCryptographicHash::Sha256);
    file.insert(checkKey, QString::fromLatin1(sum.toHex()));
}

/// Two beams that differ in one property.
struct Model
{
    Model()
    {
        beams[1].name = QStringLiteral("B1");
        objects.addKind(vrn::test::beamProperties(), [this](ObjectId id) {
            const auto found = beams.find(id.key);
            return found != beams.end() ? &found->second : nullptr;
        });
        both = PropertySelection(&objects, {0, 1}, &undo);
    }

    vrn::test::Beams beams{{0, Beam()}, {1, Beam()}};
    ObjectModel objects;
    QUndoStack undo;
    PropertySelection both;
};

/// What each beam has, in files of its own.
std::vector<QJsonObject> valuesOf(Model& model)
{
    std::vector<QJsonObject> values;
    for (const auto& beam : model.beams)
        values.push_back(PropertySelection(&model.objects, {beam.first}).save());
    return values;
}

void check(QJsonObject file)
{
    Model model;
    const std::vector<QJsonObject> before = valuesOf(model);
    bool isLoaded = false;
    try {
        const PropertyReceipt receipt = model.both.load(file);
        isLoaded = true;
        require(receipt.selected == receipt.changed + receipt.same, "a wrong sum", file);
        require((receipt.changed > 0) == (model.undo.count() == 1), "another step", file);
    } catch (const PropertyError& error) {
        require(!error.reason().isEmpty(), "no reason", file);
    }
    const std::vector<QJsonObject> after = valuesOf(model);
    if (!isLoaded) {
        require(after == before && model.undo.count() == 0, "refused, but changed", file);
        return;
    }
    const QJsonObject loaded = file.value(valuesKey).toObject();
    for (std::size_t i = 0; i < after.size(); ++i) {
        QJsonObject expected = before[i].value(valuesKey).toObject();
        for (auto value = loaded.begin(); value != loaded.end(); ++value)
            expected.insert(value.key(), value.value());
        require(after[i].value(valuesKey) == expected, "saved as other values", file);
    }
    require(model.both.load(file).changed == 0, "loaded twice", file);
    model.undo.undo();
    require(valuesOf(model) == before, "not undone", file);
}

void refuseAsserts(const vrn::smartassert::AssertReport& report)
{
    std::fprintf(stderr, "An assertion has failed: %s\n", report.expression.c_str());
    std::abort();
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    // The models announce changes later.
    static const QCoreApplication application(*argc, *argv);
    vrn::smartassert::set_assert_handler(refuseAsserts);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    const QByteArray text(reinterpret_cast<const char*>(data + 1), int(size - 1));
    const QJsonDocument input = QJsonDocument::fromJson(text);
    if (!input.isObject())
        return 0;
    static const QJsonObject good = Model().both.save();
    QJsonObject file = good;
    const QJsonObject members = input.object();
    for (auto member = members.begin(); member != members.end(); ++member)
        file.insert(member.key(), member.value());
    if (data[0] % 2 == 1)
        setCheck(file);
    check(file);
    return 0;
}
