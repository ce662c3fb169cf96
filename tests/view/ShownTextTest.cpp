#include "view/ShownText.h"

#include "LoadedViewDatabase.h"
#include "support/OpenWatch.h"
#include "view/MessagePanel.h"
#include "view/RecordPanel.h"
#include "view/SceneTreeModel.h"
#include "view/TexturePanel.h"

#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoTexture2.h>
#include <QApplication>
#include <QLabel>
#include <QTimer>
#include <QToolTip>
#include <QTreeWidget>
#include <nlohmann/json.hpp>

namespace
{

class ShownTextTest : public testing::Test
{
protected:
    /// Shows a text as a tool tip. @return whether the picture was opened for it
    bool isOpenedBy(QString const& toolTip)
    {
        QToolTip::showText(QPoint(0, 0), toolTip);
        QApplication::processEvents();
        QToolTip::hideText();
        QApplication::processEvents();
        return watch.wasOpened();
    }

    /// All that a model says when the mouse rests on it, or help is asked for.
    QStringList tipsOf(QAbstractItemModel const& model, QModelIndex const& parent = {}) const
    {
        QStringList tips;
        for (int row = 0; row < model.rowCount(parent); ++row) {
            for (int column = 0; column < model.columnCount(parent); ++column)
                for (int const role : {Qt::ToolTipRole, Qt::StatusTipRole, Qt::WhatsThisRole})
                    tips << model.index(row, column, parent).data(role).toString();
            tips << tipsOf(model, model.index(row, 0, parent));
        }
        tips.removeAll(QString());
        return tips;
    }

    void expectNothingIsOpened(QAbstractItemModel const& model)
    {
        QStringList const tips = tipsOf(model);
        EXPECT_FALSE(tips.filter("img src").isEmpty());
        for (QString const& tip : tips) {
            EXPECT_FALSE(tip.contains("<img")) << tip.toStdString();
            EXPECT_FALSE(isOpenedBy(tip)) << tip.toStdString();
        }
    }

    ScratchFolder folder;
    std::string picture = folder.write("secret.png", "picture");
    std::string name = "<img src=\"" + picture + "\">";
    OpenWatch watch{picture};
};

TEST_F(ShownTextTest, ToolTipsOpenNoImageThatAnyPartOfTheWindowNames)
{
    ASSERT_TRUE(isOpenedBy(QString::fromStdString(name))) << "a bare name would be taken for HTML";
    FltWriter flt;
    flt.add("TexturePattern", {{"fileName", name}, {"patternIndex", 3}});
    flt.push().add("Group").add("LongID", {{"idASCII", name}}).push().add("Object", {{"idASCII", "o"}});
    flt.pop().pop().save(folder.path("a.flt"));
    LoadedScene loaded(FltLoader(), folder.path("a.flt"));

    SceneTreeModel model;
    model.setScene(loaded.scene.root(), &loaded.scene, &loaded.records);
    expectNothingIsOpened(model);

    RecordPanel fields;
    SoNode const* const group = loaded.scene.root()->getChild(0);
    fields.show(loaded.records.fieldsOf(loaded.scene.recordOf(*group).value()), group);
    expectNothingIsOpened(*fields.findChild<QTreeWidget*>()->model());

    MessagePanel messages;
    messages.show({{FltMessage::Level::warning, name, ""}});
    expectNothingIsOpened(*messages.model());

    auto* const node = new SoTexture2;
    node->filename.enableNotify(FALSE);
    node->filename = name.c_str();
    loaded.scene.root()->addChild(node);
    TextureList list(loaded.scene.root());
    TexturePanel textures;
    textures.show(&list, "");
    expectNothingIsOpened(*textures.findChild<QTreeWidget*>()->model());
}

TEST_F(ShownTextTest, LabelsAndBoxesShowTextAsItIs)
{
    std::unique_ptr<QLabel> const label(ShownText::label(QString::fromStdString(name)));
    label->resize(label->sizeHint());
    static_cast<void>(label->grab());
    EXPECT_EQ(label->textFormat(), Qt::PlainText);
    QString said;
    QTimer::singleShot(0, [&said] {
        auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        said = box->text();
        box->close();
    });
    ShownText::tell(nullptr, QMessageBox::Warning, QString::fromStdString(name));
    EXPECT_EQ(said.toStdString(), name);
    EXPECT_FALSE(watch.wasOpened());
}

TEST_F(ShownTextTest, ToolTipsSayTheWholeTextInItsLines)
{
    EXPECT_EQ(ShownText::toolTip("a < b\n&amp;"), "<span>a &lt; b<br>&amp;amp;</span>");
    EXPECT_EQ(ShownText::toolTip(""), "");
}

TEST_F(ShownTextTest, TitlesHaveNoControlCharactersAndAnEnd)
{
    EXPECT_EQ(ShownText::title("a\x1b[2J\u009b\u202e").toStdString(), "a\\x1b[2J\\xc2\\x9b\\xe2\\x80\\xae");
    EXPECT_EQ(ShownText::title(QString(5000, 'n')).size(), 201);
    EXPECT_EQ(ShownText::title("a[*].flt"), "a[**].flt");
}

} // namespace
