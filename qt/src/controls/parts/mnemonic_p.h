#pragma once

#include <QString>

namespace vrn::qt::detail {

/// "Sp&an" as a user reads it, without the mark of the shortcut.
inline QString withoutMnemonic(QString caption)
{
    const QString literalMark(QChar(0));
    caption.replace(QStringLiteral("&&"), literalMark);
    caption.remove(QLatin1Char('&'));
    return caption.replace(literalMark, QStringLiteral("&"));
}

} // namespace vrn::qt::detail
