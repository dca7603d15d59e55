// The keys of a window or a part of one as a table: what they do, and what the page of all keys
// says of them.
#pragma once

#include "common/keys.h"
#include "platform/QtText.h"

#include <QKeySequence>
#include <QShortcut>

#include <vector>

namespace tarn {

template <typename Owner> struct WindowKey {
    // Qt::Key, with its modifiers.
    struct Key {
        constexpr Key(Qt::Key plain) : all(plain) {}
        constexpr Key(QKeyCombination with) : all(with.toCombined()) {}
        int all;
    } key;
    const char* says;
    void (Owner::*act)();
};

template <typename Window, typename Table> void ConnectKeys(Window& window, const Table& table) {
    for (const auto& row : table)
        QObject::connect(new QShortcut(QKeySequence(row.key.all), &window), &QShortcut::activated,
                         &window, row.act);
}

// False for a key that is none of these.
template <typename Owner, typename Table> bool ActOnKey(Owner& owner, const Table& table, int key) {
    for (const auto& row : table) {
        if (row.key.all != key) continue;
        (owner.*row.act)();
        return true;
    }
    return false;
}

template <typename Table> std::vector<keys::KeyLine> LinesOf(const Table& table) {
    std::vector<keys::KeyLine> lines;
    for (const auto& row : table)
        keys::AddLine(lines, FromQt(QKeySequence(row.key.all).toString(QKeySequence::NativeText)),
                      row.says);
    return lines;
}

} // namespace tarn
