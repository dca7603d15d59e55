// What lies under a picture's name need not be a file.
#include "support/TestFolder.h"

#include "platform/OpenRegular.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <future>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace tarn::testing {
namespace {

std::string FaultOf(const std::string& path) {
    std::string error;
    return OpenFile(path, error) ? "opened" : error;
}

void BindSocket(const std::string& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    ASSERT_LT(path.size(), sizeof address.sun_path);
    path.copy(address.sun_path, path.size());
    const int listening = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    ASSERT_EQ(::bind(listening, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    ::close(listening);
}

} // namespace

TEST(OpenRegular, AllButFilesAreToldByTheirKindAtOnce) {
    const TestFolder folder;
    const std::string pipe = folder.Path() + "/pipe.jpg";
    const std::string link = folder.Path() + "/link.jpg";
    const std::string socket = folder.Path() + "/socket.jpg";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    std::filesystem::create_symlink(pipe, link);
    BindSocket(socket);
    const std::pair<std::string, std::string> kFaults[] = {
        {pipe, "Not a file but a pipe"},
        {link, "Not a file but a pipe"},
        {socket, "Not a file but a socket"},
        {"/dev/zero", "Not a file but a device"},
        {folder.Path(), "Not a file but a folder"},
        {folder.Path() + "/none.jpg", "No such file or directory"},
    };
    for (const auto& [path, fault] : kFaults) {
        auto told = std::async(std::launch::async, [&] { return FaultOf(path); });
        if (told.wait_for(std::chrono::seconds(5)) != std::future_status::ready) {
            ADD_FAILURE() << path << " is waited for";
            ::close(::open(pipe.c_str(), O_RDWR | O_NONBLOCK)); // lets the reader go
        }
        EXPECT_EQ(told.get(), fault) << path;
    }
}

TEST(OpenRegular, ReadersGetAPlainNumberThatOtherProgramsDoNot) {
    const TestFolder folder;
    const std::string path = folder.Write("a", "bytes");
    std::filesystem::create_symlink(path, folder.Path() + "/link");
    std::string error;
    const FileHandle file = OpenRegular(folder.Path() + "/link", error);
    ASSERT_TRUE(file) << error;
    EXPECT_EQ(::fcntl(::fileno(file.get()), F_GETFL) & O_NONBLOCK, 0);
    EXPECT_EQ(::fcntl(::fileno(file.get()), F_GETFD), FD_CLOEXEC);
    std::filesystem::rename(path, path + "2"); // the number stands for the file, not for its name
    const FileHandle again = OpenRegular(NameOfOpen(::fileno(file.get())), error);
    ASSERT_TRUE(again) << error;
    char bytes[6] = {};
    EXPECT_EQ(std::fread(bytes, 1, 5, again.get()), 5U);
    EXPECT_STREQ(bytes, "bytes");
}

} // namespace tarn::testing
