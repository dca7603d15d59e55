// What a command in the making answers as the file system does.
#include "history/Changes.h"

#include "common/paths.h"

namespace tarn {

bool Changes::Exists(const std::string& path) const {
    return m_files.Exists(path);
}
bool Changes::IsFolder(const std::string& path) const {
    return m_files.IsFolder(path);
}
bool Changes::IsSameFile(const std::string& a, const std::string& b) const {
    return m_files.IsSameFile(a, b);
}
bool Changes::IsWritable(const std::string& path) const {
    return m_files.IsWritable(path);
}
bool Changes::LeadsOut(const std::string& path) const {
    return m_files.LeadsOut(path);
}
std::int64_t Changes::Volume(const std::string& path) const {
    return m_files.Volume(path);
}
std::optional<FileLook> Changes::Look(const std::string& path, std::string* error) const {
    return m_files.Look(path, error);
}
std::optional<std::vector<std::string>> Changes::FileNames(const std::string& folder,
                                                           std::string* error) const {
    return m_files.FileNames(folder, error);
}
std::vector<std::string> Changes::FolderNames(const std::string& folder) const {
    return m_files.FolderNames(folder);
}
std::optional<std::string> Changes::FindAnyCase(const std::string& path) const {
    return m_files.FindAnyCase(path);
}
std::optional<std::string> Changes::Read(const std::string& path, std::size_t most,
                                         std::string* error, std::size_t from) const {
    return m_files.Read(path, most, error, from);
}
std::string Changes::FindThrown(const std::string& path, const FileLook& look) const {
    return m_files.FindThrown(path, look);
}
std::string Changes::Absolute(const std::string& path) const {
    return m_files.Absolute(path);
}
std::string Changes::HomeFolder() const {
    return m_files.HomeFolder();
}
std::string Changes::PicturesFolder() const {
    return m_files.PicturesFolder();
}
std::string Changes::StateFolder() const {
    return m_files.StateFolder();
}
void Changes::Sweep(const std::string& folder) {
    m_files.Sweep(folder);
}
void Changes::Flush(const std::string& folder) {
    m_files.Flush(folder);
}

// New files that are put into place together: one command's step for each of them.
class Changes::Staged : public StagedFiles {
public:
    Staged(Changes& changes, std::string folder, std::unique_ptr<StagedFiles> real)
        : m_changes(changes), m_folder(std::move(folder)), m_real(std::move(real)) {}

    bool Write(const std::string& name, std::string_view bytes, std::string* error) override {
        if (!m_real->Write(name, bytes, error)) return false;
        m_names.insert(name);
        return true;
    }

    bool Place(std::string* error, std::string* failed) override {
        std::vector<Step> plan;
        for (const std::string& name : m_names) {
            const std::string path = JoinPath(m_folder, name);
            Step made = m_changes.NewStep(StepKind::Written, path);
            if (made.before.inode != 0) plan.push_back(m_changes.PlanThrow(path));
            made.before = {}; // what stands there has gone to the wastebasket by then
            plan.push_back(std::move(made));
        }
        const std::vector<Step> steps = plan;
        if (!m_changes.Plan(std::move(plan), error)) return false;
        std::vector<std::size_t> places;
        for (const Step& step : steps) {
            const auto at = m_changes.WriteDown(step, error);
            if (at) places.push_back(*at);
            if (!at && failed) *failed = LastPart(step.from);
            if (!at) return Ended(places, false);
        }
        return Ended(places, m_real->Place(error, failed));
    }

private:
    bool Ended(const std::vector<std::size_t>& steps, bool placed) {
        for (const std::size_t at : steps) {
            m_changes.Finish(at, placed);
            Step& step = m_changes.m_steps[at];
            if (!placed || step.kind != StepKind::Written) continue;
            step.after = m_changes.LookAt(step.from);
            m_changes.m_changed.insert(step.number);
        }
        return placed;
    }

    Changes& m_changes;
    std::string m_folder;
    std::unique_ptr<StagedFiles> m_real;
    std::set<std::string> m_names;
};

std::unique_ptr<StagedFiles> Changes::Stage(const std::string& folder, std::string* error) {
    auto real = m_files.Stage(folder, error);
    return real ? std::make_unique<Staged>(*this, folder, std::move(real)) : nullptr;
}

} // namespace tarn
