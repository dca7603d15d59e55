#include "console/decoders/Stars.h"

#include "common/paths.h"
#include "common/worker.h"
#include "imaging/PictureLoader.h"
#include "sky/measures/MeasureStore.h"
#include "sky/night/MeasuresFile.h"
#include "sky/planes/MeasurePicture.h"

#include <array>
#include <atomic>
#include <filesystem>
#include <set>

namespace tarn {

namespace {

constexpr std::size_t kThreads = 2;

std::string AbsoluteOf(const std::string& path) {
    std::error_code code;
    const std::filesystem::path whole = std::filesystem::absolute(path, code);
    return code ? path : whole.lexically_normal().string();
}

} // namespace

std::vector<FrameMeasures> MeasureFiles(const std::vector<std::string>& paths) {
    MeasureStore store(MeasuresFile());
    std::vector<FrameMeasures> rows(paths.size());
    std::vector<FileLook> looks;
    std::vector<std::size_t> missing;
    for (std::size_t i = 0; i < paths.size(); ++i) {
        looks.push_back(PictureLoader::LookAt(paths[i]));
        if (auto known = store.Find(AbsoluteOf(paths[i]), looks[i]))
            rows[i] = std::move(*known);
        else
            missing.push_back(i);
    }
    {
        std::atomic<std::size_t> next = 0;
        const auto work = [&] {
            for (std::size_t i = next++; i < missing.size(); i = next++)
                rows[missing[i]] = MeasurePicture(paths[missing[i]]);
        };
        std::array<Worker, kThreads> workers;
        for (Worker& worker : workers) worker = Worker(work);
    }
    for (const std::size_t i : missing)
        // A file that changed meanwhile, or could not be read, is asked again.
        if (rows[i].width > 0 && PictureLoader::LookAt(paths[i]) == looks[i])
            store.Put(AbsoluteOf(paths[i]), looks[i], rows[i]);
    std::set<std::string> folders;
    for (const std::string& path : paths) folders.insert(FolderOf(AbsoluteOf(path)));
    for (const std::string& folder : folders) store.DropVanished(folder);
    return rows;
}

} // namespace tarn
