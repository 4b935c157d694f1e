#pragma once

#include <QString>

#include <vector>

class QWidget;

namespace gallery {

/// A page of the gallery: one family of controls.
struct Page
{
    QString name; ///< For the command line, as in "line-edits".
    QString title;
    QWidget* (*create)(QWidget* parent);
};

/// Every page, in the order in which they are listed.
const std::vector<Page>& pages();

} // namespace gallery
