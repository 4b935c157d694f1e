#include <vrn/qt/cppdb_table_view_base.h>

#include <QPointer>

#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"
#include "table_fixture.h"

using namespace vrn::test;
using vrn::qt::detail::CppDbTableViewBase;

namespace {

/// A view in a window whose application does something while a command runs: when its code is
/// called for the second time at a place.
class Scene : public QObject
{
public:
    Scene()
    {
        for (int column = 0; column < 2; ++column) {
            m_columns.at(column)->before = [this, column] {
                const QString call = m_columns.at(column)->log.last();
                reach(call.startsWith("validate") ? "validate" : "reformat");
            };
        }
        view = new CppDbTableViewBase(
            model,
            [this](int column) {
                reach("the validators");
                return m_columns(column);
            },
            window);
        view->setModel(model);
        view->setCreateNewRowHandler([this](int, const auto&) {
            reach("the handler");
            if (model)
                model->append("0.5,'new'");
        });
        connect(model, &QAbstractItemModel::dataChanged, this, [this] { reach("dataChanged"); });
        connect(model, &QAbstractItemModel::rowsInserted, this, [this] { reach("rowsInserted"); });
        setClipboard("before");
        connect(QApplication::clipboard(), &QClipboard::dataChanged, this,
            [this] { reach("the clipboard"); });
    }
    ~Scene() override
    {
        delete window;
        delete model;
    }

    void perform(const QString& command)
    {
        setClipboard(command == "paste a text" ? "7" : "7\t7\n7\t7\n7\t7\n7\t7\n");
        select(*view, command == "paste at a corner" ? "1,0" : "0,0:2,1");
        m_isRunning = true;
        if (command == "clear")
            pressDelete(*view);
        else if (command == "cut")
            pressCut(*view);
        else if (command == "copy")
            pressCopy(*view);
        else
            pressPaste(*view);
        m_isRunning = false;
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    QPointer<QWidget> window = new QWidget;
    QPointer<TypedModel> model = new TypedModel("1.0,'a' | 2.0,'b' | 3.0,'c'");
    // Its slots come before those of the scene, which change the model.
    QAbstractItemModelTester tester{model, QAbstractItemModelTester::FailureReportingMode::QtTest};
    QPointer<CppDbTableViewBase> view;

    QString place;
    std::function<void(Scene&)> deed;
    bool done = false;
    /// What was called afterwards, apart from signals of the write that was under way.
    QStringList later;

private:
    void reach(const QString& reached)
    {
        if (!m_isRunning)
            return;
        if (done) {
            later << reached;
        } else if (reached == place && (++m_times == 2 || reached == "the clipboard")) {
            done = true;
            deed(*this);
        }
    }

    Columns m_columns{"nt"};
    bool m_isRunning = false;
    int m_times = 0;
};

using Deed = std::function<void(Scene&)>;

const QMap<QString, QStringList>& places()
{
    static const QMap<QString, QStringList> byCommand = {
        {"clear", {"dataChanged"}},
        {"copy", {"the validators", "reformat", "the clipboard"}},
        {"cut", {"the validators", "reformat", "the clipboard", "dataChanged"}},
        {"paste a text", {"the validators", "validate", "dataChanged"}},
        {"paste on several cells", {"the validators", "validate", "dataChanged"}},
        {"paste at a corner",
            {"the validators", "validate", "dataChanged", "the handler", "rowsInserted"}},
    };
    return byCommand;
}

void addCells(const char* deedName, const Deed& deed, bool alsoFromTheModel = true)
{
    for (auto command = places().begin(); command != places().end(); ++command) {
        for (const QString& place : command.value()) {
            const bool isFromTheModel = place == "dataChanged" || place == "rowsInserted";
            if (isFromTheModel && !alsoFromTheModel)
                continue;
            QTest::addRow("%s: %s in %s", qPrintable(command.key()), deedName, qPrintable(place))
                << command.key() << place << deed;
        }
    }
}

} // namespace

Q_DECLARE_METATYPE(Deed)

class TestTableViewLifetime : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void theViewMayBeDestroyed_data()
    {
        columns<QString, QString, Deed>("command", "place", "deed");
        addCells("the view", [](Scene& scene) { delete scene.view; });
        addCells("its window", [](Scene& scene) { delete scene.window; });
    }
    void theViewMayBeDestroyed()
    {
        QFETCH(QString, command);
        QFETCH(QString, place);
        QFETCH(Deed, deed);
        Scene scene;
        scene.place = place;
        scene.deed = deed;
        scene.perform(command);
        QVERIFY(scene.done);
        QVERIFY(!scene.view);
        QStringList due;
        if (place == "the handler")
            due << "rowsInserted";
        QCOMPARE(scene.later, due);
    }

    void theViewMayBeDestroyedLater_data()
    {
        columns<QString, QString, Deed>("command", "place", "deed");
        addCells("the view", [](Scene& scene) { scene.view->deleteLater(); });
    }
    void theViewMayBeDestroyedLater()
    {
        QFETCH(QString, command);
        QFETCH(QString, place);
        QFETCH(Deed, deed);
        Scene untouched;
        untouched.perform(command);
        const QString text = clipboard();
        Scene scene;
        scene.place = place;
        scene.deed = deed;
        scene.perform(command);
        QVERIFY(!scene.view);
        QCOMPARE(scene.model->content(), untouched.model->content());
        QCOMPARE(clipboard(), text);
    }

    void theModelMayBeDestroyed_data()
    {
        columns<QString, QString, Deed>("command", "place", "deed");
        addCells(
            "the model", [](Scene& scene) { delete scene.model; }, false);
        addCells(
            "the model and the view",
            [](Scene& scene) {
                delete scene.model;
                delete scene.view;
            },
            false);
    }
    void theModelMayBeDestroyed()
    {
        QFETCH(QString, command);
        QFETCH(QString, place);
        QFETCH(Deed, deed);
        Scene scene;
        scene.place = place;
        scene.deed = deed;
        scene.perform(command);
        QVERIFY(scene.done);
        if (scene.view) {
            pressDelete(*scene.view);
            pressCopy(*scene.view);
            pressPaste(*scene.view);
        }
    }

    void theModelMayChange_data()
    {
        columns<QString, QString, Deed>("command", "place", "deed");
        addCells("a row goes", [](Scene& scene) { scene.model->remove(1); });
        addCells("all rows go", [](Scene& scene) {
            while (scene.model->rowCount() > 0)
                scene.model->remove(0);
        });
        addCells("a row comes", [](Scene& scene) { scene.model->insert(0, "0.5,'new'"); });
        addCells("a reset", [](Scene& scene) { scene.model->reset(); });
        addCells("another model", [](Scene& scene) { scene.view->setModel(nullptr); });
        addCells("the same command", [](Scene& scene) { pressPaste(*scene.view); });
    }
    void theModelMayChange()
    {
        QFETCH(QString, command);
        QFETCH(QString, place);
        QFETCH(Deed, deed);
        Scene scene;
        scene.place = place;
        scene.deed = deed;
        scene.perform(command);
        QVERIFY(scene.done);
    }

    void rowsThatMoveKeepWhatIsPasted()
    {
        Scene scene;
        scene.place = "dataChanged";
        scene.deed = [](Scene& s) {
            s.model->insert(0, "0.5,'new'");
            s.model->remove(2);
        };
        scene.view->setCreateNewRowHandler({});
        scene.perform("paste on several cells");
        QCOMPARE(scene.model->content(), QString("0.5,'new' | 7.0,'7' | 7.0,'7'"));
    }

    // Afterwards nothing tells which row is which.
    void nothingIsWrittenAfterAReset()
    {
        Scene scene;
        scene.place = "dataChanged";
        scene.deed = [](Scene& s) { s.model->reset(); };
        scene.perform("paste on several cells");
        QCOMPARE(scene.model->content(), QString("7.0,'7' | 2.0,'b' | 3.0,'c'"));
    }

    // What a copy shows is what was there when it began.
    void aCopyIsOfOneMoment()
    {
        Scene scene;
        scene.place = "reformat";
        scene.deed = [](Scene& s) {
            s.model->remove(1);
            s.model->setData(s.model->index(1, 0), TypedModel::cellOf("9.0"), vrn::qt::EditRole);
        };
        scene.perform("copy");
        QCOMPARE(clipboard(), QString("1.000\ta\n2.000\tb\n3.000\tc\n"));
    }
};

VRN_TEST(TestTableViewLifetime)
#include "tst_table_view_lifetime.moc"
