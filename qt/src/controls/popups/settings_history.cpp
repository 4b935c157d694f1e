#include <vrn/qt/settings_history.h>

#include <QSettings>
#include <QStringList>

#include <algorithm>
#include <cstdint>
#include <utility>

namespace vrn::qt {

namespace {

/// A longer text is not something that a user would pick again.
constexpr std::size_t longestValue = 1000;
constexpr int codeBase = 16;
const QChar escape(u'%');
const QChar escapeEnd(u';');

bool isPlainIn(wchar_t character, bool isKey)
{
    const bool isWord = (character >= L'a' && character <= L'z')
        || (character >= L'A' && character <= L'Z') || (character >= L'0' && character <= L'9')
        || character == L'.' || character == L'-' || character == L'_';
    return isWord || (!isKey && (character == L' ' || character == L'\''));
}

/// Only what every format of settings keeps as it is: neither a slash nor a character beyond
/// ASCII. Others become "%20AC;".
QString escaped(const std::wstring& text, bool isKey)
{
    QString result;
    for (const wchar_t character : text) {
        if (isPlainIn(character, isKey))
            result += QChar(static_cast<ushort>(character));
        else
            result += escape + QString::number(std::uint32_t(character), codeBase) + escapeEnd;
    }
    return result;
}

/// Empty for a text that escaped() does not write.
std::wstring unescaped(const QString& text)
{
    std::wstring result;
    for (int i = 0; i < int(text.size()); ++i) {
        if (text.at(i) != escape) {
            result += static_cast<wchar_t>(text.at(i).unicode());
            continue;
        }
        const int end = int(text.indexOf(escapeEnd, i));
        bool isNumber = false;
        const uint code = text.mid(i + 1, end - i - 1).toUInt(&isNumber, codeBase);
        if (end < 0 || !isNumber)
            return {};
        result += static_cast<wchar_t>(code);
        i = end;
    }
    return result;
}

} // namespace

SettingsHistory::SettingsHistory(const QString& group)
    : m_group(group)
{}

SettingsHistory::SettingsHistory(std::unique_ptr<QSettings> settings, const QString& group)
    : m_settings(std::move(settings))
    , m_group(group)
{}

SettingsHistory::~SettingsHistory() = default;

QSettings& SettingsHistory::settings()
{
    if (!m_settings)
        m_settings = std::make_unique<QSettings>();
    return *m_settings;
}

QString SettingsHistory::place(const vrn::ValueHistory& history) const
{
    return m_group + QLatin1Char('/') + escaped(history.key(), true);
}

std::deque<std::wstring> SettingsHistory::valuesAt(const QString& place)
{
    // Another program may have added values.
    settings().sync();
    std::deque<std::wstring> values;
    for (const QString& each : settings().value(place).toStringList()) {
        std::wstring value = unescaped(each);
        if (!value.empty() && value.size() <= longestValue && values.size() < m_limit)
            values.push_back(std::move(value));
    }
    return values;
}

std::size_t SettingsHistory::get(const vrn::ValueHistory& history, std::deque<std::wstring>& values)
{
    if (history.key().empty())
        return 0;
    values = valuesAt(place(history));
    return values.size();
}

void SettingsHistory::add(const vrn::ValueHistory& history, const std::wstring& value)
{
    if (history.key().empty() || value.empty() || value.size() > longestValue)
        return;
    const QString where = place(history);
    std::deque<std::wstring> values = valuesAt(where);
    if (!values.empty() && values.front() == value)
        return;
    values.erase(std::remove(values.begin(), values.end(), value), values.end());
    values.push_front(value);
    QStringList texts;
    for (std::size_t i = 0; i < std::min(values.size(), m_limit); ++i)
        texts << escaped(values[i], false);
    settings().setValue(where, texts);
    settings().sync();
}

} // namespace vrn::qt
