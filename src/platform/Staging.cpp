#include "platform/Staging.h"

#include "common/paths.h"
#include "platform/Descriptors.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <utility>

namespace tarn {

namespace {

class Staging : public StagedFiles {
public:
    Staging(std::string folder, std::string hidden)
        : m_folder(std::move(folder)), m_hidden(std::move(hidden)) {}
    ~Staging() override {
        for (const std::string& name : m_names) ::unlink(JoinPath(m_hidden, name).c_str());
        ::rmdir(m_hidden.c_str());
    }

    bool Write(const std::string& name, std::string_view bytes, std::string* error) override {
        const std::string path = JoinPath(m_hidden, name);
        const Handle file(::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666));
        if (!file) return Fail(error);
        m_names.push_back(name);
        return WriteAll(file.Number(), bytes) || Fail(error);
    }

    bool Place(std::string* error, std::string* failed) override {
        if (!m_names.empty()) *failed = m_names.front();
        for (const std::string& name : m_names) {
            struct stat info {};
            const bool stands = ::stat(JoinPath(m_folder, name).c_str(), &info) == 0;
            if (!stands || !S_ISDIR(info.st_mode)) continue;
            *failed = name;
            return Fail(error, EISDIR);
        }
        const Handle folder(::open(m_folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        if (!folder || ::syncfs(folder.Number()) != 0) return Fail(error);
        for (const std::string& name : m_names) {
            if (::rename(JoinPath(m_hidden, name).c_str(), JoinPath(m_folder, name).c_str()) == 0)
                continue;
            *failed = name;
            return Fail(error);
        }
        ::fsync(folder.Number());
        return true;
    }

private:
    std::string m_folder;
    std::string m_hidden;
    std::vector<std::string> m_names;
};

} // namespace

std::unique_ptr<StagedFiles> MakeStaging(const std::string& folder, std::string* error) {
    std::string hidden = JoinPath(folder.empty() ? "." : folder, ".tarn-XXXXXX");
    if (!::mkdtemp(hidden.data())) {
        Fail(error);
        return nullptr;
    }
    return std::make_unique<Staging>(folder.empty() ? "." : folder, hidden);
}

} // namespace tarn
