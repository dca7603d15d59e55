// A hand-laid page from its header to its close: what the form and the console do with it.
#pragma once

#include "platform/Files.h"
#include "web/GalleryRun.h"
#include "web/PageEntry.h"
#include "web/PageFile.h"

#include <string>

namespace tarn {

class PageBuild {
public:
    explicit PageBuild(std::string version) : m_version(std::move(version)) {}

    // The page to be written, and the folder of its pictures; nothing is touched yet.
    void Choose(const std::string& path, const std::string& pictureFolder);

    // Each of these writes by the `files` of the command that it belongs to.
    //
    // Writes the head; `script` is the path of the program's wheelzoom.js, read where the settings
    // need it. False after a fault, as the others: the page is then closed. `now` is the date and
    // time. Settings are UTF-8 everywhere here.
    bool Begin(Files& files, const HtmlSettings& settings, const std::string& now,
               const std::string& script);

    // Goes on with an old page.
    bool Append(Files& files, const std::string& now);

    // One entry. A failed one ends the page, with its close where that can be written.
    bool Add(Files& files, const HtmlSettings& settings, bool exifInfo, const EntryFacts& facts);

    bool Close(Files& files);

    bool IsOpen() const { return m_page.IsOpen(); }
    const std::string& Path() const { return m_path; }
    int Count() const { return m_count; } // entries since the page was opened

    // The name of the picture that link mode 3 links to, UTF-8.
    void SetLinkTarget(const std::string& name);

    const GalleryFault& Fault() const { return m_fault; }

private:
    bool Fail(const std::string& error);

    std::string m_version;
    PageFile m_page;
    PageRun m_run;
    std::string m_path;
    int m_count = 0;
    GalleryFault m_fault;
};

// The lines of a text file, as bytes; none when it cannot be read.
std::vector<std::string> TextFileLines(const Files& files, const std::string& path);

// Facts of the names that stand beside a picture: whether label picture and video are there.
void FindCompanions(const Files& files, const HtmlSettings& settings, const std::string& path,
                    EntryFacts& facts);

} // namespace tarn
