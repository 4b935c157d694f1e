#pragma once

#include <vrn/qt/multi_edit_line_edit.h>
#include <vrn/qt/object_model.h>
#include <vrn/qt/property_error.h>
#include <vrn/qt/property_selection.h>

#include "controls/popups/entry_popup_p.h"
#include "property_page/row_editor_p.h"

#include "beams.h"

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QTest>
#include <QVBoxLayout>
#include <QWidget>

#include <cstring>
#include <functional>
#include <utility>
#include <vector>

namespace vrn::test {

/// A row of beams, whose editor stands between two other fields of a window. It does what a
/// page does, without an undo stack.
class LineRow
{
public:
    explicit LineRow(std::string rowKey, const std::vector<Beam>& given = std::vector<Beam>(2))
        : LineRow(std::move(rowKey), given, beamProperties())
    {}

    LineRow(std::string rowKey, const std::vector<Beam>& given,
        const vrn::qt::PropertySet<Beam>& properties)
        : key(std::move(rowKey))
        , m_layout(&window)
    {
        model.addKind(properties, [this](vrn::qt::ObjectId id) {
            const auto found = beams.find(id.key);
            return found == beams.end() ? nullptr : &found->second;
        });
        vrn::qt::ObjectIds ids;
        for (const Beam& beam : given) {
            ids.emplace_back(beams.size());
            beams.emplace(beams.size(), beam);
        }
        selection = vrn::qt::PropertySelection(&model, ids);
        questions.preview = [this](const boost::any& value) {
            ++previews;
            return selection.preview(key, value).text;
        };
        questions.spread = [this] {
            ++spreads;
            return selection.spread(key);
        };
        m_layout.addWidget(before = new QLineEdit);
        m_layout.addWidget(after = new QLineEdit);
    }

    /// Makes the editor, and shows the window with the focus in the field before.
    void open()
    {
        editor = vrn::qt::detail::makeLineEditor(&window, *selection.row(key), questions);
        m_layout.insertWidget(1, editor->widget());
        QWidget::setTabOrder(before, edit());
        QWidget::setTabOrder(edit(), after);
        using vrn::qt::detail::RowEditor;
        QObject::connect(editor, &RowEditor::changed, [this] { ++changed; });
        QObject::connect(editor, &RowEditor::cancelled, [this] {
            ++cancelled;
            show();
        });
        QObject::connect(editor, &RowEditor::ended, [this] { onEnded(); });
        show();
        window.show();
        // The offscreen platform makes any window active that is shown, popups too, when events
        // are processed; tests look before that.
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        before->setFocus();
    }

    void show() { editor->show(selection.read({key}).front(), model.units()); }

    QLineEdit* edit() const { return editor->widget()->findChild<QLineEdit*>(); }
    QString text() const { return edit()->text(); }
    vrn::qt::detail::RowEntry entry() const { return editor->entry(); }
    QString hint() const
    {
        const auto* popup = edit()->findChild<vrn::qt::detail::EntryPopup*>();
        return popup && popup->isVisible() ? popup->findChild<QLabel*>()->text() : QString();
    }
    QStringList list() const
    {
        QStringList texts;
        const auto* popup = edit()->findChild<vrn::qt::detail::EntryPopup*>();
        const auto* entries = popup ? popup->findChild<QListWidget*>() : nullptr;
        for (int i = 0; entries && popup->isVisible() && i < entries->count(); ++i)
            texts.append(entries->item(i)->text());
        return texts;
    }
    bool isRed() const { return edit()->palette().color(QPalette::Text) == QColor(230, 20, 20); }

    /// In place of what is there.
    void type(const QString& text)
    {
        if (!edit()->hasFocus())
            edit()->setFocus(Qt::TabFocusReason);
        edit()->selectAll();
        if (text.isEmpty())
            QTest::keyClick(edit(), Qt::Key_Delete);
        else if (text == QString::fromLatin1(text.toLatin1()))
            QTest::keyClicks(edit(), text);
        else
            edit()->insert(text); // No key has all of it.
    }
    void press(Qt::Key pressed, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(QApplication::focusWidget(), pressed, modifiers);
    }

    std::string key;
    Beams beams;
    vrn::qt::ObjectModel model;
    vrn::qt::PropertySelection selection;
    vrn::qt::detail::RowQuestions questions;
    QWidget window;
    QLineEdit* before = nullptr;
    QLineEdit* after = nullptr;
    QPointer<vrn::qt::detail::RowEditor> editor;
    int changed = 0;
    int cancelled = 0;
    int ended = 0;
    int written = 0;
    int previews = 0;
    int spreads = 0;

private:
    void onEnded()
    {
        ++ended;
        const auto made = entry();
        if (made.state == vrn::qt::EditState::Untouched) {
            show();
            return;
        }
        if (made.state != vrn::qt::EditState::Complete) {
            editor->refuse(made.reason);
            return;
        }
        try {
            if (selection.edit(key, made.value).changed > 0)
                ++written;
            editor->remember();
            show();
        } catch (const vrn::qt::PropertyError& error) {
            editor->refuse(error.reason());
        }
    }

    QVBoxLayout m_layout;
};

/// What a user does, one after the other.
using Steps = std::function<void(LineRow&)>;

inline Steps pressing(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
{
    return [=](LineRow& row) { row.press(key, modifiers); };
}

inline Steps inOrder(const std::vector<Steps>& all)
{
    return [=](LineRow& row) {
        for (const Steps& each : all)
            each(row);
    };
}

inline void tabInto(LineRow& row)
{
    row.before->setFocus();
    row.press(Qt::Key_Tab);
    QVERIFY(!row.editor || row.edit()->hasFocus());
}

inline std::vector<Beam> beamsOfLengths(const std::vector<double>& lengths)
{
    std::vector<Beam> beams(lengths.size());
    for (std::size_t i = 0; i < lengths.size(); ++i)
        beams[i].length = lengths[i];
    return beams;
}

} // namespace vrn::test

Q_DECLARE_METATYPE(vrn::test::Steps)
