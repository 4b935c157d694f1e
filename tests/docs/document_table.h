#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace vrn::test {

/// The rows below the header cells `header` in docs/`document`, cell by cell. If several tables
/// have that header, they follow one another. Fails the test if there are none.
QList<QStringList> tableRows(const QString& document, const QStringList& header);

/// What `cell` shows in its first pair of backticks; empty without one.
QString codeOf(const QString& cell);

} // namespace vrn::test
