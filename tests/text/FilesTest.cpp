#include "text/Files.h"

#include "support/TemporaryFolder.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <fstream>
#include <gmock/gmock.h>
#include <string>
#include <thread>

#include <pthread.h>
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

using Reading = std::string (*)(const std::string&, std::size_t);

int errorOf(const std::string& path, std::size_t mostBytes, Reading read = text::readFile)
{
    try {
        static_cast<void>(read(path, mostBytes));
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
        const std::string path = write("file", bytes);
        for (const std::string& read : {text::readFile(path), text::readNamedFile(path)}) {
            EXPECT_EQ(read, bytes);
            EXPECT_GE(read.capacity(), read.size());
        }
        EXPECT_GE(text::readFile(path).capacity(), size + text::roomBehind);
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

TEST_F(Files, ThatOthersNameAreRegular)
{
    const std::string path = write("file", "12345");
    const std::string pipe = (folder.path() / "pipe").string();
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(errorOf(path, 5, text::readNamedFile), 0);
    EXPECT_EQ(errorOf(path, 4, text::readNamedFile), EFBIG);
    EXPECT_EQ(errorOf((folder.path() / "none").string(), 5, text::readNamedFile), ENOENT);
    EXPECT_EQ(errorOf(folder.path().string(), 5, text::readNamedFile), EISDIR);
    EXPECT_EQ(errorOf("-", 5, text::readNamedFile), ENOENT);
    for (const std::string& irregular : {pipe, std::string("/dev/zero")}) {
        EXPECT_NE(errorOf(irregular, 1000000, text::readNamedFile), 0) << irregular;
    }
    EXPECT_EQ(text::readNamedFile("/proc/self/maps"), ""); // has no size
}

// A signal without SA_RESTART ends the call that waits, not the reading.
TEST_F(Files, AreReadWhateverSignalsCome)
{
    struct sigaction action = {};
    struct sigaction earlier = {};
    action.sa_handler = [](int) {};
    ASSERT_EQ(sigaction(SIGUSR1, &action, &earlier), 0);
    const std::string path = (folder.path() / "pipe").string();
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    const pthread_t reader = pthread_self();
    std::thread writer([&] {
        const auto interrupt = [&] {
            for (int i = 0; i < 20; ++i) {
                std::this_thread::sleep_for(std::chrono::milliseconds(2));
                pthread_kill(reader, SIGUSR1);
            }
        };
        interrupt(); // it waits for someone who writes
        std::ofstream stream(path, std::ios::binary);
        stream << "first" << std::flush;
        interrupt(); // it waits for more
        stream << "second";
    });
    EXPECT_EQ(text::readFile(path), "firstsecond");
    writer.join();
    sigaction(SIGUSR1, &earlier, nullptr);
}

} // namespace
