#include "text/Files.h"

#include "support/TemporaryFolder.h"

#include <cerrno>
#include <fstream>
#include <gmock/gmock.h>
#include <string>
#include <thread>

#include <sys/stat.h>

namespace {

class Files : public testing::Test {
protected:
    std::string write(const std::string& name, const std::string& bytes)
    {
        const std::string path = (folder.path() / name).string();
        std::ofstream(path, std::ios::binary) << bytes;
        return path;
    }

    TemporaryFolder folder;
};

int errorOf(const std::string& path, std::size_t mostBytes)
{
    try {
        static_cast<void>(text::readFile(path, mostBytes));
    } catch (const text::FileUnreadable& error) {
        EXPECT_THAT(error.what(), testing::StartsWith(path + ": "));
        return error.code().value();
    }
    return 0;
}

TEST_F(Files, AreReadWhole)
{
    for (const std::size_t size : {0U, 1U, 65535U, 65536U, 65537U, 300000U}) {
        const std::string bytes(size, 'x');
        const std::string read = text::readFile(write("file", bytes));
        EXPECT_EQ(read, bytes);
        EXPECT_GE(read.capacity(), read.size() + text::roomBehind);
    }
}

TEST_F(Files, AreReadFromPipesToo)
{
    const std::string path = (folder.path() / "pipe").string();
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    const std::string bytes(200000, 'p');
    std::thread writer([&] { std::ofstream(path, std::ios::binary) << bytes; });
    const std::string read = text::readFile(path);
    writer.join();
    EXPECT_EQ(read, bytes);
    EXPECT_GE(read.capacity(), read.size() + text::roomBehind);
}

TEST_F(Files, ThatCannotBeReadSayWhy)
{
    const std::string path = write("file", "12345");
    EXPECT_EQ(errorOf(path, 5), 0);
    EXPECT_EQ(errorOf(path, 4), EFBIG);
    EXPECT_EQ(errorOf((folder.path() / "none").string(), 5), ENOENT);
    EXPECT_EQ(errorOf(folder.path().string(), 100000), EISDIR);
    EXPECT_EQ(errorOf("/dev/zero", 1000000), EFBIG);
}

} // namespace
