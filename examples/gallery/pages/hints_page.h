#pragma once

#include <vrn/qt/factories.h>
#include <vrn/qt/on_value_changed_hook.h>

#include <QWidget>

#include <memory>
#include <vector>

class QGridLayout;
class QLabel;

namespace gallery {

/// Properties of a member that are described by hints alone, and the editors that the library
/// and the page make from these descriptions.
class HintsPage : public QWidget
{
    Q_OBJECT

public:
    explicit HintsPage(QWidget* parent = nullptr);
    ~HintsPage() override;

private:
    struct Row
    {
        vrn::qt::EditorMetaData editor;
        boost::any value; ///< Of the member when the page opens.
        QLabel* shown;
    };

    void addByFirstDoor();
    void addByFactory();
    void addDialogRow();

    /// Makes the editor with createEditorFromHints().
    void add(const QString& name, const vrn::qt::Hints& hints, const boost::any& value);
    /// Makes the editor called `editor` with the factory.
    void add(const QString& name, const char* editor, const vrn::qt::Hints& hints,
        const boost::any& value);
    void addRow(const QString& name, const QStringList& description,
        const vrn::qt::EditorMetaData& editor, const boost::any& value);

    void letVary(bool varies);
    static void show(const Row& row);

    QGridLayout* m_grid;
    vrn::qt::DefaultEditorFactory m_factory;
    std::vector<Row> m_rows;
    // Declared after the rows, because the hooks use them: a field that loses the focus
    // while the page is destroyed still emits its signal.
    std::vector<std::unique_ptr<vrn::qt::OnValueChangedHook>> m_hooks;
};

} // namespace gallery
