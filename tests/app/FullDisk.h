// A disk that takes no more than a few bytes: filled up where it is a small one of its own, else a
// limit of the system on what a file may hold.
#pragma once

#include <sys/resource.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <string>

namespace tarn::testing {

class FullDisk {
public:
    FullDisk(const std::string& folder, std::uintmax_t few) {
        constexpr std::uintmax_t kSmall = 8 << 20;
        if (std::filesystem::space(folder).capacity <= kSmall) {
            m_filler = folder + "/.filler";
            std::ofstream filler(m_filler, std::ios::binary);
            while (filler.write("0123456789abcdef", 16).flush()) {
            }
            filler.close();
            const std::uintmax_t size = std::filesystem::file_size(m_filler);
            std::filesystem::resize_file(m_filler, size > few ? size - few : 0);
            return;
        }
        std::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{few, m_before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk() {
        std::error_code ignored;
        if (m_filler.empty())
            ::setrlimit(RLIMIT_FSIZE, &m_before);
        else
            std::filesystem::remove(m_filler, ignored);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    std::string m_filler;
    rlimit m_before{};
};

} // namespace tarn::testing
