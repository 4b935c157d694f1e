#pragma once

#include <QByteArray>
#include <QProcessEnvironment>
#include <QStringList>

namespace vrn::test {

struct Outcome
{
    int status = -1; ///< -1 if the program crashed or did not end.
    QString output;
    QString errors;
};

/// Runs vrn-quantity to its end. It finds the locale de_DE.UTF-8 besides C.
Outcome runQuantity(const QStringList& arguments, const QByteArray& input = {});

/// Runs a command line of the shell, which finds vrn-quantity by its name.
Outcome runInShell(const QString& command, const QByteArray& input = {});

/// The environment that runQuantity() gives.
QProcessEnvironment quantityEnvironment();

} // namespace vrn::test
