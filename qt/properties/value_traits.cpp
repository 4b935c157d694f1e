#include <vrn/qt/value_traits.h>

#include <vrn/qt/property_error.h>

#include <QCoreApplication>
#include <QLocale>

#include <cmath>
#include <cstdint>
#include <string_view>

namespace vrn::qt::detail {

namespace {

const QLatin1String notANumber("nan:");
const QLatin1String minusZero("-0");
constexpr int hexadecimal = 16;
constexpr int nanDigits = 16;

// The halves of surrogate pairs that stand for the bytes from 0x80 to 0xFF.
constexpr ushort firstStrangeByte = 0xDC80;
constexpr ushort lastStrangeByte = 0xDCFF;
constexpr ushort strangeBytes = 0xDC00;

/// The length of the UTF-8 sequence at `at`, or 0 if it is none.
int sequenceLength(const std::string& text, std::size_t at)
{
    const auto byte = [&](std::size_t i) {
        return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U;
    };
    const unsigned lead = byte(at);
    const int length = lead < 0x80 ? 1
        : lead < 0xC2              ? 0
        : lead < 0xE0              ? 2
        : lead < 0xF0              ? 3
        : lead < 0xF5              ? 4
                                   : 0;
    for (int i = 1; i < length; ++i) {
        if ((byte(at + std::size_t(i)) & 0xC0U) != 0x80)
            return 0;
    }
    const unsigned second = byte(at + 1);
    const bool isOutside = (lead == 0xE0 && second < 0xA0) || (lead == 0xED && second >= 0xA0)
        || (lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second >= 0x90);
    return isOutside ? 0 : length;
}

/// Qt drops a byte order mark at the beginning of what it converts.
QString fromValidUtf8(const char* text, std::size_t size)
{
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    QString marks;
    for (; std::string_view(text, size).substr(0, mark.size()) == mark; size -= mark.size()) {
        marks += QChar(QChar::ByteOrderMark);
        text += mark.size();
    }
    return marks + QString::fromUtf8(text, int(size));
}

} // namespace

QString exactText(double value)
{
    if (std::isnan(value)) {
        std::uint64_t bits = 0;
        std::memcpy(&bits, &value, sizeof(bits));
        return notANumber
            + QString::number(bits, hexadecimal).rightJustified(nanDigits, QLatin1Char('0'));
    }
    if (value == 0.0 && std::signbit(value))
        return minusZero;
    return QString::number(value, 'g', QLocale::FloatingPointShortest);
}

std::optional<double> exactNumber(const QString& text)
{
    bool isRead = false;
    double value = 0.0;
    if (text.startsWith(notANumber)) {
        const std::uint64_t bits = text.mid(notANumber.size()).toULongLong(&isRead, hexadecimal);
        std::memcpy(&value, &bits, sizeof(value));
    } else {
        value = text.toDouble(&isRead);
    }
    if (!isRead || exactText(value) != text)
        return std::nullopt;
    return value;
}

QString textFrom(const std::string& utf8)
{
    std::size_t valid = 0;
    while (valid < utf8.size()) {
        const int length = sequenceLength(utf8, valid);
        if (length == 0)
            break;
        valid += std::size_t(length);
    }
    QString text = fromValidUtf8(utf8.data(), valid);
    while (valid < utf8.size()) {
        const int length = sequenceLength(utf8, valid);
        if (length == 0)
            text += QChar(ushort(strangeBytes + static_cast<unsigned char>(utf8[valid++])));
        else
            text += fromValidUtf8(utf8.data() + valid, std::size_t(length));
        valid += std::size_t(length);
    }
    return text;
}

std::string utf8From(const QString& text)
{
    std::string utf8;
    int begin = 0;
    for (int i = 0; i < int(text.size()); ++i) {
        const ushort unit = text.at(i).unicode();
        if (text.at(i).isHighSurrogate() && i + 1 < int(text.size())
            && text.at(i + 1).isLowSurrogate()) {
            ++i;
        } else if (unit >= firstStrangeByte && unit <= lastStrangeByte) {
            utf8 += text.mid(begin, i - begin).toStdString();
            utf8 += static_cast<char>(unit - strangeBytes);
            begin = i + 1;
        }
    }
    utf8 += text.mid(begin).toStdString();
    // Halves that are bytes may also make up a character.
    if (!text.isValidUtf16() && textFrom(utf8) != text)
        throw PropertyError(QCoreApplication::translate(
            "vrn::qt::Field", "It has half of a character, which cannot be kept here."));
    return utf8;
}

// Qt's own conversions drop a byte order mark, and replace half a pair.
QString textFrom(const std::wstring& wide)
{
    QString text;
    text.reserve(int(wide.size()));
    for (const wchar_t character : wide) {
        const uint code = std::char_traits<wchar_t>::to_int_type(character);
        if (code > QChar::LastValidCodePoint)
            text += QChar(QChar::ReplacementCharacter);
        else if (QChar::requiresSurrogates(code))
            text.append(QChar(QChar::highSurrogate(code))).append(QChar(QChar::lowSurrogate(code)));
        else
            text += QChar(ushort(code));
    }
    return text;
}

std::wstring wideFrom(const QString& text)
{
    std::wstring wide;
    wide.reserve(std::size_t(text.size()));
    for (int i = 0; i < int(text.size()); ++i) {
        const bool isPair = text.at(i).isHighSurrogate() && i + 1 < int(text.size())
            && text.at(i + 1).isLowSurrogate();
        wide += static_cast<wchar_t>(
            isPair ? QChar::surrogateToUcs4(text.at(i), text.at(i + 1)) : text.at(i).unicode());
        i += isPair ? 1 : 0;
    }
    return wide;
}

} // namespace vrn::qt::detail
