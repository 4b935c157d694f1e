#pragma once

#include <vrn/qt/vrn_qt2_export.h>
#include <vrn/units/entry_reason.h>

#include <QString>

namespace vrn::qt::detail {

/// What vrn::units::sentence() says, in the user's language.
VRN_QT2_EXPORT QString entrySentence(const vrn::units::EntryReason& reason);

QString sentenceForFraction(const QString& text);

/// What happens to a number out of the range, whose bound is `bound`.
QString sentenceForBelow(const QString& bound);
QString sentenceForAbove(const QString& bound);

/// The range itself. One of the bounds may be empty.
QString sentenceForRange(const QString& minimum, const QString& maximum);

} // namespace vrn::qt::detail
