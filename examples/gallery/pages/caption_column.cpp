#include "pages/caption_column.h"

#include <vrn/companion_qt/label.h>
#include <vrn/qt/simple_line_edit.h>

#include <QLineEdit>

#include <algorithm>

namespace gallery {

void alignCaptions(const std::vector<vrn::qt::SimpleLineEdit*>& edits)
{
    std::vector<VRN_QT_Label*> captions;
    int width = 0;
    for (auto* edit : edits) {
        for (VRN_QT_Label* label : edit->findChildren<VRN_QT_Label*>()) {
            if (label->buddy() != edit->edit())
                continue;
            captions.push_back(label);
            width = std::max(width, label->sizeHint().width());
        }
    }
    for (VRN_QT_Label* caption : captions)
        caption->setMinimumWidth(width);
}

} // namespace gallery
