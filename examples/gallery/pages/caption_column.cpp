#include "pages/caption_column.h"

#include <vrn/companion_qt/label.h>
#include <vrn/qt/simple_line_edit.h>

#include <QWidget>

#include <algorithm>

namespace gallery {

void alignCaptions(const std::vector<QWidget*>& controls)
{
    std::vector<VRN_QT_Label*> captions;
    int width = 0;
    for (const QWidget* control : controls) {
        for (VRN_QT_Label* label : control->findChildren<VRN_QT_Label*>()) {
            // A unit is a label too, but it is not a caption.
            if (!label->buddy())
                continue;
            captions.push_back(label);
            width = std::max(width, label->sizeHint().width());
        }
    }
    for (VRN_QT_Label* caption : captions)
        caption->setMinimumWidth(width);
}

void alignCaptions(const std::vector<vrn::qt::SimpleLineEdit*>& edits)
{
    alignCaptions(std::vector<QWidget*>(edits.begin(), edits.end()));
}

} // namespace gallery
