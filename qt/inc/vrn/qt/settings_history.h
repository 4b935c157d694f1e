#pragma once

#include <vrn/qt/value_history.h>
#include <vrn/qt/vrn_qt2_export.h>

#include <QString>

#include <cstddef>
#include <deque>
#include <memory>
#include <string>

class QSettings;

namespace vrn::qt {

/// Keeps the last values of each history in the settings of the application, so that they are
/// there when it starts again:
///
///     QCoreApplication::setOrganizationName(QStringLiteral("example"));
///     QCoreApplication::setApplicationName(QStringLiteral("beams"));
///     const auto storage = boost::make_shared<SettingsHistory>();
///     vrn::ValueHistory lengths(L"quantity.length", storage);
///     lengths.add(L"7.62 m");
///
/// The newest value comes first, and a value that is added again comes to the front, unlike in
/// a ValueHistoryMemoryStorage. Another running program of the application may add values to
/// the same history: both are kept. Keys and values may have any characters. A value of more
/// than 1000 characters is not kept.
class VRN_QT2_EXPORT SettingsHistory final : public vrn::IValueHistoryStorage
{
public:
    /// In a group of QSettings(), which is opened at first use.
    explicit SettingsHistory(const QString& group = QStringLiteral("history"));
    /// In a group of `settings`.
    SettingsHistory(std::unique_ptr<QSettings> settings, const QString& group);
    ~SettingsHistory();

    /// How many values of a key are kept; 10 at first.
    std::size_t limit() const { return m_limit; }
    void setLimit(std::size_t limit) { m_limit = limit; }

    /// With an empty key it returns 0 and leaves `values` alone.
    std::size_t get(const vrn::ValueHistory& history, std::deque<std::wstring>& values) override;
    /// An empty value or key is ignored.
    void add(const vrn::ValueHistory& history, const std::wstring& value) override;

private:
    QSettings& settings();
    /// Where the values of a history are.
    QString place(const vrn::ValueHistory& history) const;
    std::deque<std::wstring> valuesAt(const QString& place);

    std::unique_ptr<QSettings> m_settings;
    QString m_group;
    std::size_t m_limit = 10;
};

} // namespace vrn::qt
