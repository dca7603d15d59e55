// What files are sorted by and only the disk can tell, read by threads of its own. What was read of
// a folder stays known as long as its files stay as they were. No widgets.
#pragma once

#include "common/worker.h"
#include "navigation/ListOrders.h"
#include "platform/Files.h"

#include <functional>
#include <list>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace tarn {

class SortFacts {
public:
    // `told` is called on a thread of this one's, once all is read.
    SortFacts(const Files& files, std::function<void()> told);
    ~SortFacts();
    SortFacts(const SortFacts&) = delete;
    SortFacts& operator=(const SortFacts&) = delete;

    // Begins to read; what was begun before is broken off.
    void Read(const std::string& folder, std::vector<std::string> names, int kind);
    // Whether what a folder's files are sorted by is known, and no reading under way.
    bool IsRead() const;

    // As far as it is known now.
    std::optional<std::int64_t> KeyOf(const std::string& folder, const std::string& name, int kind);

private:
    struct Fact {
        FileLook look;
        std::optional<std::int64_t> key;
    };
    using Facts = std::unordered_map<std::string, Fact>; // by name
    struct Run;

    static void Work(Run& run, const Files& files, const std::function<void()>& told);
    void TakeFinished();

    const Files& m_files;
    const std::function<void()> m_told;
    std::string m_folder; // of what is known
    int m_kind = 0;
    std::shared_ptr<const Facts> m_facts;
    std::shared_ptr<Run> m_run; // the last; null once it is taken over
    struct Begun {
        std::shared_ptr<Run> run;
        Worker worker;
    };
    std::list<Begun> m_begun; // no thread is put over another
};

} // namespace tarn
