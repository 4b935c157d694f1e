#pragma once

#include <vrn/qt/vrn_qt2_export.h>

#include <boost/noncopyable.hpp>
#include <boost/shared_ptr.hpp>

#include <cstddef>
#include <deque>
#include <map>
#include <string>

namespace vrn {

struct IValueHistoryStorage;

/// The last few values that were entered under a key, newest first. Two fields
/// whose histories have the same key and storage share their values.
///
///     auto* span = SimpleLineEdit::create(
///         form, tr("Span"), new DoubleEditValidator, 0, ExpandHorizontal);
///     span->setValueHistory(vrn::ValueHistory::create(L"forms", L"span"));
///
/// Values are kept until the process ends. Use it on the GUI thread only.
struct VRN_QT2_EXPORT ValueHistory
{
    /// Without a storage the history stays empty and `add` does nothing.
    ValueHistory(const std::wstring& key, boost::shared_ptr<IValueHistoryStorage> storage);

    /// A new history on IValueHistoryStorage::getOrCreate(storageName).
    static boost::shared_ptr<ValueHistory> create(
        const std::wstring& storageName, const std::wstring& key);

    const std::wstring& key() const { return m_key; }

    void add(const std::wstring& value);

    /// Replaces `values` with those of the key and returns their number. Without a
    /// storage or with an empty key it returns 0 and leaves `values` alone.
    std::size_t get(std::deque<std::wstring>& values) const;

private:
    std::wstring m_key;
    boost::shared_ptr<IValueHistoryStorage> m_storage;
};

/// Keeps the values of histories by their keys. Derive from it to keep them
/// elsewhere. The destructor is not virtual, so destroy a storage through the
/// shared pointer in which it was created, or as its own type.
struct VRN_QT2_EXPORT IValueHistoryStorage : public boost::noncopyable
{
    virtual std::size_t get(const ValueHistory& history, std::deque<std::wstring>& values) = 0;
    virtual void add(const ValueHistory& history, const std::wstring& value) = 0;

    /// The one storage of the process, made at the first call. The name is ignored:
    /// all names share this storage.
    static boost::shared_ptr<IValueHistoryStorage> getOrCreate(const std::wstring& name);

protected:
    ~IValueHistoryStorage() = default;
};

/// Keeps the last five values of each key in memory.
struct VRN_QT2_EXPORT ValueHistoryMemoryStorage final : public IValueHistoryStorage
{
    /// With an empty key it returns 0 and leaves `values` alone. With an unknown key
    /// it clears them.
    std::size_t get(const ValueHistory& history, std::deque<std::wstring>& values) override;

    /// Puts `value` in front of the values of its key. An empty value or key is
    /// ignored, and a value that is already there keeps its place.
    void add(const ValueHistory& history, const std::wstring& value) override;

private:
    std::map<std::wstring, std::deque<std::wstring>> m_valuesByKey;
    std::size_t m_limit = 5;
};

} // namespace vrn
