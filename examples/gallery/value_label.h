#pragma once

#include <QLabel>

namespace gallery {

/// Shows a value in the width that its column has. A longer value is cut, and a tool tip
/// shows all of it. So the fields beside it keep their width while the user types.
class ValueLabel : public QLabel
{
    Q_OBJECT

public:
    explicit ValueLabel(QWidget* parent = nullptr);

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QString shownText() const;
};

} // namespace gallery
