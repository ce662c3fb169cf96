#include "view/ModelSaver.h"

#include "LoadedViewDatabase.h"
#include "SettingsFolder.h"
#include "view/LoadProgress.h"
#include "view/ModelExport.h"

#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>
#include <QTimer>
#include <QWidget>
#include <functional>

namespace
{

class ModelSaverTest : public SettingsFolder
{
protected:
    ModelSaverTest() : model{FltLoader(), folder.path("yard.flt"), std::nullopt}
    {
        viewDatabase().save(model.database);
        qApp->setAttribute(Qt::AA_DontUseNativeDialogs);
    }

    /// Saves the model, and does something in the dialog that asks where.
    QString save(std::function<void(QFileDialog&)> const& act)
    {
        QTimer::singleShot(0, [&act] {
            auto* const dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(nullptr, dialog);
            act(*dialog);
        });
        return ModelSaver(window, progress).save(model, "hangar/1");
    }

    static void accept(QFileDialog& dialog) { QMetaObject::invokeMethod(&dialog, "accept"); }

    static void choose(QFileDialog& dialog, QString const& filter)
    {
        dialog.selectNameFilter(filter);
        emit dialog.filterSelected(filter);
    }

    static QString filterOf(char const* ending)
    {
        return ModelExport::filters().split(";;").filter(ending).value(0);
    }

    bool isThere(char const* name) const { return QFile::exists(QString::fromStdString(folder.path(name))); }

    QWidget window;
    LoadProgress progress;
    ModelExport model;
};

TEST_F(ModelSaverTest, AsksBesideTheDatabaseForANameWithoutFolders)
{
    QString offered;
    QString const said = save([&](QFileDialog& dialog) {
        choose(dialog, filterOf("*.iv"));
        offered = dialog.selectedFiles().value(0);
        accept(dialog);
    });
    EXPECT_EQ(folder.path("hangar_1.iv"), offered.toStdString());
    EXPECT_EQ("Saved as " + folder.path("hangar_1.iv") + ".", said.toStdString());
    EXPECT_TRUE(isThere("hangar_1.iv"));
}

TEST_F(ModelSaverTest, ChangesTheEndingWithTheForm)
{
    QStringList offered;
    save([&](QFileDialog& dialog) {
        for (char const* ending : {"*.obj", "*.wrl"}) {
            choose(dialog, filterOf(ending));
            offered << QFileInfo(dialog.selectedFiles().value(0)).fileName();
        }
        dialog.reject();
    });
    EXPECT_EQ("hangar_1.obj hangar_1.wrl", offered.join(' ').toStdString());
}

TEST_F(ModelSaverTest, RemembersTheFormThatWasChosenLast)
{
    save([](QFileDialog& dialog) {
        choose(dialog, filterOf("*.obj"));
        accept(dialog);
    });
    QString next;
    save([&next](QFileDialog& dialog) {
        next = dialog.selectedNameFilter();
        dialog.reject();
    });
    EXPECT_EQ(filterOf("*.obj").toStdString(), next.toStdString());
}

TEST_F(ModelSaverTest, SavesNothingWhereTheDialogIsLeftOrALoadIsUnderWay)
{
    EXPECT_EQ("", save([](QFileDialog& dialog) { dialog.reject(); }).toStdString());
    LoadProgress::Run const run(progress, "town.flt");
    EXPECT_EQ("", ModelSaver(window, progress).save(model, "hangar").toStdString());
    EXPECT_FALSE(isThere("hangar.glb"));
    EXPECT_FALSE(isThere("hangar_1.glb"));
}

TEST_F(ModelSaverTest, SaysWhyNothingCouldBeSaved)
{
    model.database = folder.path("gone.flt");
    QString problem;
    QString const said = save([&problem](QFileDialog& dialog) {
        QTimer::singleShot(0, [&problem] {
            auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(nullptr, box);
            problem = box->text();
            box->accept();
        });
        accept(dialog);
    });
    EXPECT_EQ("", said.toStdString());
    EXPECT_TRUE(problem.contains("gone.flt")) << problem.toStdString();
}

} // namespace
