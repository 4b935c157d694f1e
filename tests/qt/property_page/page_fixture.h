#pragma once

#include <vrn/qt/property_page.h>

#include "beam_model.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QUndoStack>
#include <QVBoxLayout>

#include <memory>
#include <string>

namespace vrn::test {

/// Three beams of different names and the same length in a page, all of whose sections are
/// open, beside a button that takes the focus, in an active window.
class PageFixture
{
public:
    explicit PageFixture(
        int count = 3, const vrn::qt::PropertySet<Beam>& properties = beamProperties())
        : model(std::make_unique<BeamModel>(count, properties))
        , stack(std::make_unique<QUndoStack>())
        , window(std::make_unique<QWidget>())
        , page(new vrn::qt::PropertyPage(window.get()))
        , button(new QPushButton("Elsewhere", window.get()))
    {
        auto* column = new QVBoxLayout(window.get());
        column->addWidget(page);
        column->addWidget(button);
        for (auto& beam : model->beams)
            beam.second.length = 10.0 / 3.0;
        page->setModel(model.get());
        page->setUndoStack(stack.get());
        page->setSelection(model->ids());
        page->editor("support");
        window->resize(500, 700);
        window->show();
        // At once, because waiting for it takes longer than most tests.
        QApplication::setActiveWindow(window.get());
        button->setFocus();
    }

    /// The line edit of a text or a number.
    QLineEdit* line(const std::string& key) const
    {
        QWidget* editor = page->editor(key);
        auto* edit = qobject_cast<QLineEdit*>(editor);
        return edit || !editor ? edit : editor->findChild<QLineEdit*>();
    }
    template <typename W>
    W* part(const char* name) const
    {
        return page->findChild<W*>(QString::fromLatin1(name));
    }
    QString text(const std::string& key) const { return page->row(key).text; }
    vrn::qt::EditState edit(const std::string& key) const { return page->row(key).edit; }

    /// Types it in place of what stands there, and does not end it.
    void type(const std::string& key, const QString& text) const
    {
        // What it calls may destroy it.
        const QPointer<QLineEdit> edit(line(key));
        edit->setFocus(Qt::TabFocusReason);
        if (edit)
            edit->selectAll();
        if (edit && text.isEmpty())
            QTest::keyClick(edit, Qt::Key_Delete);
        for (int i = 0; i < text.size() && edit && edit->isVisible(); ++i)
            QTest::keyClicks(edit, text.mid(i, 1));
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const
    {
        QTest::keyClick(focus(), key, modifiers);
    }
    /// What takes the keys, in the active window. A popup is the active window here, unlike on a
    /// desktop.
    QWidget* focus() const
    {
        if (!window->isActiveWindow() && window->isVisible())
            QApplication::setActiveWindow(window.get());
        QWidget* focus = window->focusWidget();
        return focus ? focus : window.get();
    }
    void leave() const
    {
        focus();
        button->setFocus();
    }
    /// While another window is active.
    template <typename Act>
    void inAnotherWindow(Act act) const
    {
        QWidget other;
        other.show();
        other.activateWindow();
        if (!QTest::qWaitForWindowActive(&other))
            qFatal("the other window is not active");
        act();
        window->activateWindow();
        if (!QTest::qWaitForWindowActive(window.get()))
            qFatal("the window is not active");
    }
    double lengthOf(std::uint64_t key) const { return model->beams.at(key).length; }

    std::unique_ptr<BeamModel> model;
    std::unique_ptr<QUndoStack> stack;
    std::unique_ptr<QWidget> window;
    QPointer<vrn::qt::PropertyPage> page;
    QPushButton* button;
};

} // namespace vrn::test
