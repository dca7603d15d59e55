// The desktop's clipboard.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

class QImage;

namespace tarn {

struct ClipboardFiles {
    std::vector<std::string> paths; // local files, as listed
    bool cut = false;               // to be moved, not copied
    bool operator==(const ClipboardFiles&) const = default;
};

class Clipboard {
public:
    virtual ~Clipboard() = default;
    virtual void SetText(const std::string& utf8) = 0; // replaces all that was there
    virtual void SetPicture(const QImage& picture) = 0;

    // Files in the form that file managers take: a list of addresses and a word for cut or copy.
    virtual void SetFiles(const ClipboardFiles& files) = 0;
    virtual ClipboardFiles Files() const = 0; // no paths when it holds none

    virtual std::string Text() const = 0;

    std::function<void()> onChange; // whoever put something there
};

std::unique_ptr<Clipboard> MakeClipboard();

} // namespace tarn
