// Parts of the program that stand in modules of their own, since the libraries that they bring are
// large and seldom needed. A module exports one table of what it does, by the name TarnModule, and
// is loaded when that is first asked for. Any thread.
#pragma once

#include <string>

namespace tarn {

// The full path of "libtarn-NAME.so", beside the program or in ../lib/tarn-view/plugins; empty when
// it is not installed.
std::string ModulePath(const std::string& name);

// The same of a program that ours starts and nobody else.
std::string HelperPath(const std::string& name);

// Its table; null when it is not installed or does not load.
const void* LoadModule(const std::string& name);

// The same, with the name that the table's type has.
template <typename Table> const Table* FromModule() {
    static const auto* const kTable = static_cast<const Table*>(LoadModule(Table::kModule));
    return kTable;
}

} // namespace tarn
