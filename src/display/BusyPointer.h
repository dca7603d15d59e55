// The hourglass for as long as it lives.
#pragma once

#include "desk/commands/Commands.h"

namespace tarn {

class BusyPointer {
public:
    explicit BusyPointer(ShellCommands& shell) : m_shell(shell) { m_shell.SetBusy(true); }
    ~BusyPointer() { m_shell.SetBusy(false); }
    BusyPointer(const BusyPointer&) = delete;
    BusyPointer& operator=(const BusyPointer&) = delete;

private:
    ShellCommands& m_shell;
};

} // namespace tarn
