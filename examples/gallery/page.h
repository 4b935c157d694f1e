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

/// All pages, in the order of the list.
const std::vector<Page>& pages();

} // namespace gallery
