// Programs outside: started without a shell, the path as one argument.
#pragma once

#include <memory>
#include <string>

namespace tarn {

class Desktop {
public:
    virtual ~Desktop() = default;

    // Each returns why it could not be done, empty when it was.
    virtual std::string StartProgram(const std::string& program, const std::string& path) = 0;
    virtual std::string OpenAssociated(const std::string& path) = 0; // the desktop's choice
    // Its editor for plain text; alone when the path is empty.
    virtual std::string EditText(const std::string& path) = 0;

    // The file manager on the folder, the file marked where possible (empty: none).
    virtual std::string ShowInFileManager(const std::string& folder, const std::string& file) = 0;

    // Screen saver and sleep are held off until told otherwise; nothing where the desktop has no
    // way to ask.
    virtual void HoldAwake(bool hold) = 0;
};

std::unique_ptr<Desktop> MakeDesktop();

} // namespace tarn
