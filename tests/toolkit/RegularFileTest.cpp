#include "toolkit/RegularFile.h"

#include "support/OpenWatch.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

namespace
{

class RegularFileTest : public testing::Test
{
protected:
    std::string pipe() const
    {
        std::string path = folder / "pipe";
        EXPECT_EQ(::mkfifo(path.c_str(), 0600), 0);
        return path;
    }

    ScratchFolder folder;
};

void expectNoFile(std::string const& path, int reason)
{
    errno = 0;
    EXPECT_FALSE(RegularFile::open(path.c_str()).isOpen()) << path;
    EXPECT_EQ(errno, reason) << path;
}

} // namespace

TEST_F(RegularFileTest, OpensAFileAndALinkToOne)
{
    std::string const path = folder.write("a", "text");
    std::filesystem::create_symlink(path, folder / "link");
    for (std::string const& name : {path, folder / "link"}) {
        OpenFile const file = RegularFile::open(name.c_str());
        ASSERT_TRUE(file.isOpen());
        char first = 0;
        EXPECT_EQ(::read(file.descriptor(), &first, 1), 1);
        EXPECT_EQ(first, 't');
    }
}

TEST_F(RegularFileTest, SaysWhyThereIsNone)
{
    expectNoFile(folder / "none", ENOENT);
    expectNoFile("", ENOENT);
    expectNoFile(folder / "", EINVAL);
    expectNoFile("/dev/zero", EINVAL);
}

TEST_F(RegularFileTest, DoesntTouchAPipe)
{
    std::string const path = pipe();
    OpenWatch watch(path);
    expectNoFile(path, EINVAL);
    EXPECT_TRUE(RegularFile::isReadable(path.c_str()));
    EXPECT_FALSE(watch.wasOpened());
    OpenWatch proof(folder.write("a", "text"));
    static_cast<void>(RegularFile::open((folder / "a").c_str()));
    EXPECT_TRUE(proof.wasOpened()) << "the watch sees what is opened";
}

TEST_F(RegularFileTest, FilesFoldersAndDevicesAreReadable)
{
    EXPECT_TRUE(RegularFile::isReadable(folder.write("a", "text").c_str()));
    EXPECT_TRUE(RegularFile::isReadable((folder / "").c_str()));
    EXPECT_TRUE(RegularFile::isReadable("/dev/zero"));
}

TEST_F(RegularFileTest, NothingAndASocketArent)
{
    EXPECT_FALSE(RegularFile::isReadable((folder / "none").c_str()));
    EXPECT_FALSE(RegularFile::isReadable(""));
    std::string const path = folder / "socket";
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    ASSERT_LT(path.size(), sizeof address.sun_path);
    path.copy(address.sun_path, path.size());
    int const socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    ASSERT_EQ(::bind(socket, reinterpret_cast<sockaddr const*>(&address), sizeof address), 0);
    EXPECT_FALSE(RegularFile::isReadable(path.c_str()));
    ::close(socket);
}
