#include "platform/Staging.h"

#include "common/paths.h"
#include "platform/Descriptors.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <utility>

namespace tarn {

namespace {

class Staging : public StagedFiles {
public:
    Staging(std::string folder, std::string hidden)
        : m_folder(std::move(folder)), m_hidden(std::move(hidden)) {}
    ~Staging() override {
        for (const std::string& name : m_names) ::unlink(Hidden(name).c_str());
        ::rmdir(m_hidden.c_str());
    }

    bool Write(const std::string& name, std::string_view bytes, std::string* error) override {
        const Handle file(
            ::open(Hidden(name).c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666));
        if (!file) return Fail(error);
        if (std::find(m_names.begin(), m_names.end(), name) == m_names.end())
            m_names.push_back(name);
        return WriteAll(file.Number(), bytes) || Fail(error);
    }

    bool Place(std::string* error, std::string* failed) override {
        const Handle folder(::open(m_folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        if (!m_names.empty()) *failed = m_names.front();
        if (!folder || ::syncfs(folder.Number()) != 0) return Fail(error);
        std::vector<Placed> placed;
        for (const std::string& name : m_names) {
            const int why = PlaceOne(name, placed);
            if (why == 0) continue;
            *failed = name;
            for (auto done = placed.rbegin(); done != placed.rend(); ++done) TakeBack(*done);
            return Fail(error, why);
        }
        ::fsync(folder.Number());
        // What is left in the hidden folder is what stood there before.
        m_names.clear();
        for (const Placed& done : placed)
            if (done.exchanged) m_names.push_back(done.name);
        return true;
    }

private:
    struct Placed {
        std::string name;
        std::string target;
        bool exchanged; // what stood there is in the hidden folder now
    };

    std::string Hidden(const std::string& name) const { return JoinPath(m_hidden, name); }

    // 0, or the system's number of the fault.
    int PlaceOne(const std::string& name, std::vector<Placed>& placed) {
        std::string target = JoinPath(m_folder, name);
        struct stat info {};
        const bool stands = ::stat(target.c_str(), &info) == 0;
        if (stands) target = BehindLinks(target);
        if (stands && S_ISDIR(info.st_mode)) return EISDIR;
        if (stands && ::access(target.c_str(), W_OK) != 0) return errno;
        if (stands && ::chmod(Hidden(name).c_str(), ModeFor(target)) != 0) return errno;
        const unsigned how = stands ? RENAME_EXCHANGE : RENAME_NOREPLACE;
        if (::renameat2(AT_FDCWD, Hidden(name).c_str(), AT_FDCWD, target.c_str(), how) == 0) {
            placed.push_back({name, target, stands});
            return 0;
        }
        // File systems that cannot exchange: nothing keeps the old one.
        if (errno != EINVAL && errno != ENOSYS) return errno;
        return ::rename(Hidden(name).c_str(), target.c_str()) == 0 ? 0 : errno;
    }

    void TakeBack(const Placed& done) {
        ::renameat2(AT_FDCWD, done.target.c_str(), AT_FDCWD, Hidden(done.name).c_str(),
                    done.exchanged ? RENAME_EXCHANGE : RENAME_NOREPLACE);
    }

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
