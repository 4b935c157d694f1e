#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace vrn::test {

/// A cell of a table.
struct Place
{
    int row;
    int column;
};

/// What the commands of a table view do with the clipboard, in terms of places and texts. What is
/// in the cells is up to the derived class.
class ClipboardRules
{
public:
    virtual ~ClipboardRules() = default;

    void copy(const std::vector<Place>& selected);
    /// Returns false if it throws.
    bool paste(const std::vector<Place>& selected);

    QString clipboard;

protected:
    ClipboardRules() = default;
    ClipboardRules(const ClipboardRules&) = default;
    ClipboardRules& operator=(const ClipboardRules&) = default;

    virtual int rowCount() const = 0;
    /// The text of a cell; unset for one that is not copied.
    virtual std::optional<QString> written(const Place& place) const = 0;
    /// Pastes a text into a row that is there; the column may be past the last one.
    virtual void read(const Place& place, const QString& text) = 0;
    /// Pastes a line, from a column on, below the last row. False if no row is made.
    virtual bool append(int column, const QStringList& line) = 0;

private:
    void pasteAt(const Place& corner, const std::vector<QStringList>& block);
    bool pasteOver(const std::vector<Place>& selected, const std::vector<QStringList>& block);
};

} // namespace vrn::test
