#pragma once

#include "injection/farm.h"

#include <QByteArrayList>

#include <map>

namespace vrn::test::injection {

/// Prints each cell that has failed, and at the end what they have in common.
class Report
{
public:
    /// With logs, the first cell of each failure is followed by all that it has written.
    explicit Report(bool withLogs)
        : m_withLogs(withLogs)
    {}

    void take(const Result& result);
    void print() const;

    bool isGood() const { return m_failed == 0; }

private:
    void fail(const Result& result);

    bool m_withLogs;
    int m_passed = 0;
    int m_failed = 0;
    // A run takes another way than the rehearsal.
    int m_notReached = 0;
    int m_nothingToDo = 0;
    std::map<QByteArray, QByteArrayList> m_namesByFailure;
};

} // namespace vrn::test::injection
