#include "entry_spellings.h"

#include <vrn/units/entry.h>

#include <QLocale>
#include <QString>
#include <QStringList>

#include <array>
#include <cmath>
#include <iostream>
#include <memory>
#include <optional>

#ifdef VRN_BENCH_UDUNITS2
#include <udunits2.h>
#endif
#ifdef VRN_BENCH_KUNITCONVERSION
#include <KUnitConversion/Converter>
#include <KUnitConversion/Value>
#endif

namespace bench {
namespace {

using vrn::units::Context;
using vrn::units::EntryState;
namespace UnitId = vrn::units::UnitId;

/// A text, the field in which it is written, the language of the user, and the number that
/// the user means, in the base scale.
struct Spelling
{
    const char* text;
    UnitId::UnitId kind;
    const char* locale;
    double meant;
};

constexpr double pi = 3.14159265358979323846;

constexpr std::array spellings = {
    // clang-format off
    Spelling{"12 m", UnitId::GEO_LENGTH, "C", 12.0},
    Spelling{"12m", UnitId::GEO_LENGTH, "C", 12.0},
    Spelling{"12 m ", UnitId::GEO_LENGTH, "C", 12.0},
    Spelling{"12.5 m", UnitId::GEO_LENGTH, "C", 12.5},
    Spelling{"−5 m", UnitId::GEO_LENGTH, "C", -5.0},
    Spelling{"1e3 mm", UnitId::GEO_LENGTH, "C", 1.0},
    Spelling{"1.5*10^3 mm", UnitId::GEO_LENGTH, "C", 1.5},
    Spelling{"1 250 m", UnitId::GEO_LENGTH, "C", 1250.0},
    Spelling{"1,250 m", UnitId::GEO_LENGTH, "en_US", 1250.0},
    Spelling{"1,250.5 m", UnitId::GEO_LENGTH, "en_US", 1250.5},
    Spelling{"12,5 m", UnitId::GEO_LENGTH, "de_DE", 12.5},
    Spelling{"1234,5 m", UnitId::GEO_LENGTH, "de_DE", 1234.5},
    Spelling{"1.234,5 m", UnitId::GEO_LENGTH, "de_DE", 1234.5},
    Spelling{"1'250 m", UnitId::GEO_LENGTH, "de_CH", 1250.0},
    Spelling{"1'250.5 m", UnitId::GEO_LENGTH, "de_CH", 1250.5},
    Spelling{"1/2 in", UnitId::GEO_LENGTH, "en_US", 0.0127},
    Spelling{"1 1/2 in", UnitId::GEO_LENGTH, "en_US", 0.0381},
    Spelling{"1½ in", UnitId::GEO_LENGTH, "en_US", 0.0381},
    Spelling{"3/4\"", UnitId::GEO_LENGTH, "en_US", 0.01905},
    Spelling{"6\"", UnitId::GEO_LENGTH, "en_US", 0.1524},
    Spelling{"5'", UnitId::GEO_LENGTH, "en_US", 1.524},
    Spelling{"5'6", UnitId::GEO_LENGTH, "en_US", 1.6764},
    Spelling{"5′ 6″", UnitId::GEO_LENGTH, "en_US", 1.6764},
    Spelling{"-5'-6\"", UnitId::GEO_LENGTH, "en_US", -1.6764},
    Spelling{"1'-3 1/2\"", UnitId::GEO_LENGTH, "en_US", 0.3937},
    Spelling{"1' 3.5\"", UnitId::GEO_LENGTH, "en_US", 0.3937},
    Spelling{"5 ft 6 in", UnitId::GEO_LENGTH, "en_US", 1.6764},
    Spelling{"12 feet", UnitId::GEO_LENGTH, "en_US", 3.6576},
    Spelling{"1 foot", UnitId::GEO_LENGTH, "en_US", 0.3048},
    Spelling{"10 ft.", UnitId::GEO_LENGTH, "en_US", 3.048},
    Spelling{"3 inches", UnitId::GEO_LENGTH, "en_US", 0.0762},
    Spelling{"12 ft / 5", UnitId::GEO_LENGTH, "en_US", 0.73152},
    Spelling{"3 m + 20 cm", UnitId::GEO_LENGTH, "C", 3.2},
    Spelling{"2*3.5 m", UnitId::GEO_LENGTH, "C", 7.0},
    Spelling{"2 × 3.5 m", UnitId::GEO_LENGTH, "C", 7.0},
    Spelling{"20 m²", UnitId::GEO_AREA, "C", 20.0},
    Spelling{"20 sq ft", UnitId::GEO_AREA, "en_US", 1.8580608},
    Spelling{"45°", UnitId::ANGLE, "C", pi / 4.0},
    Spelling{"30 deg", UnitId::ANGLE, "C", pi / 6.0},
    Spelling{"12 kN", UnitId::LOAD_POINT, "C", 12.0},
    Spelling{"12 KN", UnitId::LOAD_POINT, "de_DE", 12.0},
    Spelling{"2,5 MN", UnitId::LOAD_POINT, "de_DE", 2500.0},
    Spelling{"12 kips", UnitId::LOAD_POINT, "en_US", 53.378659383},
    Spelling{"12 lbf", UnitId::LOAD_POINT, "en_US", 0.053378659383},
    Spelling{"1500 lbs", UnitId::LOAD_POINT, "en_US", 6.6723324229},
    Spelling{"5 kN/m", UnitId::LOAD_LINE, "C", 5.0},
    Spelling{"2 k/ft", UnitId::LOAD_LINE, "en_US", 29.187805875},
    Spelling{"12 kN/m2", UnitId::LOAD_AREA, "C", 12.0},
    Spelling{"12 kN/m²", UnitId::LOAD_AREA, "C", 12.0},
    Spelling{"12 kN/m^2", UnitId::LOAD_AREA, "C", 12.0},
    Spelling{"40 psf", UnitId::LOAD_AREA, "en_US", 1.9152103592},
    Spelling{"30 N/mm²", UnitId::MAT_STRESS, "C", 30000.0},
    Spelling{"30 MPa", UnitId::MAT_STRESS, "C", 30000.0},
    Spelling{"3 psi", UnitId::MAT_STRESS, "en_US", 20.684271879},
    Spelling{"50 ksi", UnitId::MAT_STRESS, "en_US", 344737.86466},
    Spelling{"12 kNm", UnitId::LOAD_MOMENT, "C", 12.0},
    Spelling{"12 kN m", UnitId::LOAD_MOMENT, "C", 12.0},
    Spelling{"12 kN·m", UnitId::LOAD_MOMENT, "C", 12.0},
    Spelling{"12 kN*m", UnitId::LOAD_MOMENT, "C", 12.0},
    Spelling{"150 k-ft", UnitId::LOAD_MOMENT, "en_US", 203.37269225},
    // clang-format on
};
static_assert(spellings.size() == 60);

/// The unit of the base scale of a kind, for other libraries.
const char* baseUnit(UnitId::UnitId kind)
{
    switch (kind) {
    case UnitId::GEO_LENGTH:
        return "m";
    case UnitId::GEO_AREA:
        return "m^2";
    case UnitId::ANGLE:
        return "rad";
    case UnitId::LOAD_POINT:
        return "kN";
    case UnitId::LOAD_LINE:
        return "kN/m";
    case UnitId::LOAD_MOMENT:
        return "kN.m";
    default:
        return "kN/m^2";
    }
}

QString verdict(const Spelling& spelling, std::optional<double> read)
{
    if (!read)
        return QStringLiteral("refused");
    if (std::abs(*read - spelling.meant) <= 1e-6 * std::abs(spelling.meant))
        return QStringLiteral("right");
    return QStringLiteral("**wrong**: %1").arg(*read, 0, 'g', 6);
}

#ifdef VRN_BENCH_UDUNITS2
std::optional<double> readByUdunits(ut_system* system, const Spelling& spelling)
{
    const std::unique_ptr<ut_unit, decltype(&ut_free)> typed(
        ut_parse(system, spelling.text, UT_UTF8), ut_free);
    const std::unique_ptr<ut_unit, decltype(&ut_free)> base(
        ut_parse(system, baseUnit(spelling.kind), UT_UTF8), ut_free);
    if (!typed || !ut_are_convertible(typed.get(), base.get()))
        return std::nullopt;
    const std::unique_ptr<cv_converter, decltype(&cv_free)> converter(
        ut_get_converter(typed.get(), base.get()), cv_free);
    return cv_convert_double(converter.get(), 1.0);
}
#endif

#ifdef VRN_BENCH_KUNITCONVERSION
/// It reads units only. So the text is divided after the last digit, sign and blank of the
/// number, and QLocale reads the number.
std::optional<double> readByKUnitConversion(const Spelling& spelling)
{
    KUnitConversion::UnitId base = KUnitConversion::InvalidUnit;
    switch (spelling.kind) {
    case UnitId::GEO_LENGTH:
        base = KUnitConversion::Meter;
        break;
    case UnitId::GEO_AREA:
        base = KUnitConversion::SquareMeter;
        break;
    case UnitId::ANGLE:
        base = KUnitConversion::Radian;
        break;
    case UnitId::LOAD_POINT:
        base = KUnitConversion::Kilonewton;
        break;
    case UnitId::LOAD_AREA:
    case UnitId::MAT_STRESS:
        base = KUnitConversion::Kilopascal;
        break;
    default:
        return std::nullopt;
    }
    const QString text = QString::fromUtf8(spelling.text);
    int end = 0;
    while (end < text.size()
        && (text.at(end).isDigit() || QStringLiteral("+-.,'").contains(text.at(end))))
        ++end;
    bool ok = false;
    const double number = QLocale(QLatin1String(spelling.locale)).toDouble(text.left(end), &ok);
    const KUnitConversion::Value typed(number, text.mid(end).trimmed());
    if (!ok || !typed.isValid())
        return std::nullopt;
    const KUnitConversion::Value value = typed.convertTo(base);
    return value.isValid() ? std::optional<double>(value.number()) : std::nullopt;
}
#endif

wchar_t signOf(const QString& sign)
{
    return static_cast<wchar_t>(sign.at(0).unicode());
}

vrn::units::Entry read(const Spelling& spelling)
{
    const QLocale user((QLatin1String(spelling.locale)));
    return vrn::units::read_entry(QString::fromUtf8(spelling.text).toStdWString(), Context(),
        spelling.kind, {signOf(user.decimalPoint()), signOf(user.groupSeparator())});
}

/// In a field whose label is the unit of the base scale.
std::optional<double> readByQLocale(const Spelling& spelling)
{
    bool ok = false;
    const double number =
        QLocale(QLatin1String(spelling.locale)).toDouble(QString::fromUtf8(spelling.text), &ok);
    return ok ? std::optional<double>(number) : std::nullopt;
}

} // namespace

bool printEntrySpellings()
{
#ifdef VRN_BENCH_UDUNITS2
    ut_set_error_message_handler(ut_ignore);
    const std::unique_ptr<ut_system, decltype(&ut_free_system)> system(
        ut_read_xml(nullptr), ut_free_system);
#endif
    std::cout << "| Written | In | By a user of | udunits2 | KUnitConversion | `QLocale` "
                 "| `EntryReader` |\n|---|---|---|---|---|---|---|\n";
    bool isNoneWrong = true;
    for (const Spelling& spelling : spellings) {
        QString udunits = QStringLiteral("not found");
        QString kUnitConversion = udunits;
#ifdef VRN_BENCH_UDUNITS2
        udunits = verdict(spelling, readByUdunits(system.get(), spelling));
#endif
#ifdef VRN_BENCH_KUNITCONVERSION
        kUnitConversion = verdict(spelling, readByKUnitConversion(spelling));
#endif
        const vrn::units::Entry entry = read(spelling);
        const bool isRead = entry.state == EntryState::Complete;
        QString ours = verdict(
            spelling, isRead ? std::optional<double>(entry.quantity.value) : std::nullopt);
        isNoneWrong = isNoneWrong && !ours.contains(QLatin1String("wrong"));
        if (!isRead)
            ours += QStringLiteral(": ") + QString::fromStdWString(sentence(entry.reason));
        const QStringList cells = {QStringLiteral("`%1`").arg(QString::fromUtf8(spelling.text)),
            QString::fromLatin1(baseUnit(spelling.kind)), QString::fromLatin1(spelling.locale),
            udunits, kUnitConversion, verdict(spelling, readByQLocale(spelling)), ours};
        std::cout << "| " << cells.join(QStringLiteral(" | ")).toStdString() << " |\n";
    }
    return isNoneWrong;
}

} // namespace bench
