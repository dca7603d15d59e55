// The real file system, with a place for a test to look on or to make single calls fail.
#pragma once

#include "platform/Files.h"

#include <cerrno>
#include <functional>
#include <memory>
#include <string>

namespace tarn::testing {

class ForwardingFiles : public Files {
public:
    using Hook = std::function<std::string(const std::string& verb, const std::string& path)>;

    // Asked before every call that changes the disk, with the verb and the path; a text makes the
    // call fail with it.
    Hook onChange;

    // From now on these changes fail, of whatever file whose path has the part.
    void Refuse(const std::string& verb, const std::string& error, const std::string& part = {}) {
        onChange = [=](const std::string& asked, const std::string& path) {
            return asked == verb && path.find(part) != std::string::npos ? error : std::string();
        };
    }

    // The same before every question; one that fails is answered as the system's refusal is.
    Hook onAsk;

    bool Exists(const std::string& p) const override {
        return !Answers("exists", p) || real->Exists(p);
    }
    bool IsSameFile(const std::string& a, const std::string& b) const override {
        return Answers("same", a) && real->IsSameFile(a, b);
    }
    bool IsFolder(const std::string& p) const override {
        return Answers("is folder", p) && real->IsFolder(p);
    }
    std::optional<FileLook> Look(const std::string& p, std::string* e) const override {
        if (!Answers("look", p, e)) return {};
        return real->Look(p, e);
    }
    std::int64_t Volume(const std::string& p) const override { return real->Volume(p); }
    std::string FindThrown(const std::string& p, const FileLook& look) const override {
        return real->FindThrown(p, look);
    }
    std::optional<std::vector<std::string>> FileNames(const std::string& f,
                                                      std::string* e) const override {
        if (!Answers("names", f, e)) return {};
        return real->FileNames(f, e);
    }
    std::vector<std::string> FolderNames(const std::string& f) const override {
        if (!Answers("folders", f)) return {};
        return real->FolderNames(f);
    }
    std::optional<std::string> FindAnyCase(const std::string& p) const override {
        if (!Answers("any case", p)) return p;
        return real->FindAnyCase(p);
    }
    std::optional<std::string> Read(const std::string& p, std::size_t most, std::string* e,
                                    std::size_t from = 0) const override {
        if (!Answers("read", p, e)) return {};
        return real->Read(p, most, e, from);
    }
    bool Write(const std::string& p, std::string_view b, std::string* e) override {
        return May("write", p, e) && real->Write(p, b, e);
    }
    bool Trash(const std::string& p, std::string* e, std::string* where) override {
        return May("trash", p, e) && real->Trash(p, e, where);
    }
    std::vector<std::string> TrashAll(const std::vector<std::string>& paths) override {
        std::vector<std::string> allowed;
        for (const std::string& p : paths)
            if (May("trash", p, nullptr)) allowed.push_back(p);
        const std::vector<std::string> where = real->TrashAll(allowed);
        std::vector<std::string> all(paths.size());
        for (std::size_t i = 0, k = 0; i < paths.size() && k < allowed.size(); ++i)
            if (paths[i] == allowed[k]) all[i] = where[k++];
        return all;
    }
    bool Restore(const std::string& where, const std::string& p, std::string* e) override {
        return May("restore", p, e) && real->Restore(where, p, e);
    }
    bool Remove(const std::string& p, std::string* e) override {
        return May("remove", p, e) && real->Remove(p, e);
    }
    bool WriteAt(const std::string& p, std::size_t at, std::string_view b,
                 std::string* e) override {
        return May("write at", p, e) && real->WriteAt(p, at, b, e);
    }
    bool Extend(const std::string& p, std::size_t at, std::string_view b, std::string* e) override {
        return May("extend", p, e) && real->Extend(p, at, b, e);
    }
    std::unique_ptr<StagedFiles> Stage(const std::string& folder, std::string* e) override {
        if (!May("stage", folder, e)) return nullptr;
        auto staged = real->Stage(folder, e);
        return staged ? std::make_unique<Staged>(*this, std::move(staged)) : nullptr;
    }
    bool SetTimes(const std::string& p, std::int64_t when, std::string* e) override {
        return May("times", p, e) && real->SetTimes(p, when, e);
    }
    bool PutTimeBack(const std::string& p, const FileLook& then, std::string* e) override {
        return May("time back", p, e) && real->PutTimeBack(p, then, e);
    }
    bool Rename(const std::string& from, const std::string& to, std::string* e) override {
        return May("rename", from, e) && real->Rename(from, to, e);
    }
    bool Copy(const std::string& from, const std::string& to, std::string* e,
              std::string* replaced) override {
        return May("copy", from, e) && real->Copy(from, to, e, replaced);
    }
    Moved Move(const std::string& from, const std::string& to, std::string* e,
               std::string* replaced) override {
        return May("move", from, e) ? real->Move(from, to, e, replaced) : Moved::No;
    }
    void Sweep(const std::string& folder) override { real->Sweep(folder); }
    void Flush(const std::string& folder) override { real->Flush(folder); }
    bool LeadsOut(const std::string& p) const override { return real->LeadsOut(p); }
    bool IsWritable(const std::string& p) const override {
        return Answers("writable", p) && real->IsWritable(p);
    }
    bool MakeFolder(const std::string& p, std::string* e) override {
        return May("folder", p, e) && real->MakeFolder(p, e);
    }
    int RemoveFolder(const std::string& p, std::string* e) override {
        return May("remove folder", p, e) ? real->RemoveFolder(p, e) : EPERM;
    }
    std::string Absolute(const std::string& p) const override { return real->Absolute(p); }
    std::string HomeFolder() const override { return real->HomeFolder(); }
    std::string PicturesFolder() const override { return real->PicturesFolder(); }
    std::string StateFolder() const override { return real->StateFolder(); }

protected:
    std::unique_ptr<Files> real = MakeFiles();

private:
    class Staged : public StagedFiles {
    public:
        Staged(const ForwardingFiles& files, std::unique_ptr<StagedFiles> real)
            : m_files(files), m_real(std::move(real)) {}
        bool Write(const std::string& name, std::string_view b, std::string* e) override {
            return m_files.May("stage", name, e) && m_real->Write(name, b, e);
        }
        bool Place(std::string* e, std::string* failed) override {
            return m_files.May("place", "", e) && m_real->Place(e, failed);
        }

    private:
        const ForwardingFiles& m_files;
        std::unique_ptr<StagedFiles> m_real;
    };

    static bool Passes(const Hook& hook, const std::string& verb, const std::string& path,
                       std::string* error) {
        const std::string refusal = hook ? hook(verb, path) : std::string();
        if (refusal.empty()) return true;
        if (error) *error = refusal;
        return false;
    }
    bool May(const std::string& verb, const std::string& path, std::string* error) const {
        return Passes(onChange, verb, path, error);
    }

protected:
    bool Answers(const std::string& verb, const std::string& path,
                 std::string* error = nullptr) const {
        return Passes(onAsk, verb, path, error);
    }
};

} // namespace tarn::testing
