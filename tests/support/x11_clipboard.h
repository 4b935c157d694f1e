#pragma once

#include <QString>

/// The clipboard as another program has it. For tests of the label "x11"; each function fails
/// the running test if that program does.
namespace vrn::test::x11 {

/// What another program reads from the clipboard. This one may answer meanwhile.
QString readClipboard();

/// Makes another program the owner of the clipboard. This one learns of it from the server
/// later.
void writeClipboard(const QString& text);

} // namespace vrn::test::x11
