#pragma once

#include <QString>
#include <QToolButton>

namespace vrn::qt::detail {

/// The head of a section of a page. It is checked while the section is open; to a screen reader
/// it is expanded then. Space and Enter fold and unfold, and so do the arrow keys along the
/// line; those across step to another head.
class SectionHead : public QToolButton
{
    Q_OBJECT

public:
    SectionHead(const QString& key, const QString& title, QWidget* parent);

    /// Emits nothing.
    void setOpen(bool open);

    /// On a narrow page the title gives way.
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// The user asks for it.
    void openRequested(bool open);
    /// To the next head (1) or the one before (-1).
    void stepRequested(int step);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void request(bool open);
};

} // namespace vrn::qt::detail
