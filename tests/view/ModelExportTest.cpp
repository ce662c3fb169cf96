#include "view/ModelExport.h"

#include "LoadedViewDatabase.h"

#include <QFile>

namespace
{

class ModelExportTest : public LoadedViewDatabase
{
protected:
    QString write(char const* name, FltLoader const& loader = {}) const
    {
        return ModelExport{loader, path, std::nullopt}.write(folder.path(name));
    }

    QString writePart(char const* part, char const* name) const
    {
        return ModelExport{FltLoader(), path, place(part)}.write(folder.path(name));
    }

    QString problemOf(char const* name, FltLoader const& loader = {}) const
    {
        try {
            write(name, loader);
            return {};
        } catch (std::runtime_error const& problem) {
            return QString::fromUtf8(problem.what());
        }
    }

    QByteArray bytesOf(char const* name) const
    {
        QFile file(QString::fromStdString(folder.path(name)));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
};

TEST_F(ModelExportTest, WritesEveryFormOfTheList)
{
    for (char const* name : {"yard.glb", "yard.gltf", "yard.html", "yard.obj", "yard.iv", "yard.wrl"})
        EXPECT_NO_THROW(write(name)) << name;
    EXPECT_TRUE(bytesOf("yard.glb").startsWith("glTF"));
    EXPECT_TRUE(bytesOf("yard.gltf").contains("yard.bin"));
    EXPECT_TRUE(bytesOf("yard.html").toLower().startsWith("<!doctype html>"));
    EXPECT_TRUE(bytesOf("yard.obj").contains("mtllib"));
    EXPECT_TRUE(bytesOf("yard.iv").startsWith("#Inventor"));
    EXPECT_TRUE(bytesOf("yard.wrl").startsWith("#VRML V2.0 utf8"));
    for (QString const& filter : ModelExport::filters().split(";;"))
        EXPECT_NE(QByteArray(), bytesOf(ModelExport::withEnding("yard", filter).toStdString().c_str()))
            << filter.toStdString();
}

TEST_F(ModelExportTest, WritesAPartAlone)
{
    writePart("floor", "floor.iv");
    EXPECT_TRUE(bytesOf("floor.iv").contains("floor"));
    EXPECT_FALSE(bytesOf("floor.iv").contains("panel"));
    writePart("floor", "floor.obj");
    EXPECT_EQ(4, bytesOf("floor.obj").count("\nv "));
}

TEST_F(ModelExportTest, SaysWhatIsNotInTheFile)
{
    EXPECT_TRUE(write("yard.glb").contains("the texture nowhere/poster.png, which isn't found"));
    EXPECT_EQ("", write("yard.iv"));
}

TEST_F(ModelExportTest, WritesTheExactConversionInFormsOfItsToolkitOnly)
{
    EXPECT_EQ("", problemOf("exact.iv", exactly()));
    EXPECT_TRUE(bytesOf("exact.iv").contains("vertexPropertyPalette"));
    EXPECT_EQ("", problemOf("exact.wrl", exactly()));
    EXPECT_TRUE(bytesOf("exact.wrl").startsWith("#VRML V2.0 utf8"));
    EXPECT_TRUE(problemOf("exact.glb", exactly()).contains("as .iv or .wrl alone"));
}

TEST_F(ModelExportTest, SaysWhyAFileCannotBeWrittenAndNeverReplacesTheDatabase)
{
    EXPECT_TRUE(problemOf("yard.txt").contains("Choose another ending."));
    EXPECT_EQ(QByteArray(), bytesOf("yard.txt"));
    ModelExport const whole{FltLoader(), path, std::nullopt};
    for (char const* name : {"/below.glb", "/below.obj", "/below.iv", "/below.wrl"})
        EXPECT_THROW(whole.write(path + name), std::runtime_error) << name;
    QByteArray const before = bytesOf("yard.flt");
    for (char const* name : {"link.html", "link.iv", "link.wrl", "link.obj"}) {
        ASSERT_TRUE(QFile::link(QString::fromStdString(path), QString::fromStdString(folder.path(name))));
        EXPECT_NE("", problemOf(name)) << name;
    }
    EXPECT_EQ(before, bytesOf("yard.flt"));
}

TEST_F(ModelExportTest, PutsTheEndingOfAFormInPlaceOfAnother)
{
    EXPECT_EQ("yard.glb", ModelExport::withEnding("yard", "glTF (*.glb)"));
    EXPECT_EQ("yard.wrl", ModelExport::withEnding("yard.GLB", "VRML97 (*.wrl)"));
    EXPECT_EQ("yard.v2.wrl", ModelExport::withEnding("yard.v2", "VRML97 (*.wrl)"));
}

} // namespace
