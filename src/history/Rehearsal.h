// What a command is going to change, found out by running it where nothing is changed: its steps in
// their order are the plan of the command itself, so that it can be finished after a kill.
#pragma once

#include "history/Changes.h"
#include "history/History.h"
#include "platform/Files.h"

#include <memory>
#include <vector>

namespace tarn {

class Rehearsal {
public:
    explicit Rehearsal(const Files& real);
    ~Rehearsal();
    Rehearsal(const Rehearsal&) = delete;
    Rehearsal& operator=(const Rehearsal&) = delete;

    Files& Disk() { return *m_disk; } // answers as if all that was rehearsed had been done
    Changes& Command() { return m_command; }

    std::vector<Step> Steps() const; // of what went well

private:
    std::unique_ptr<Files> m_disk;
    History m_history; // in memory
    Changes m_command;
};

} // namespace tarn
