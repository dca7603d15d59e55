#include "desk/batch/PictureNames.h"

#include "common/paths.h"
#include "common/patterns.h"

namespace tarn {

bool IsPictureName(const ProgramState& s, const std::string& name) {
    const std::string type = FileTypeOf(name);
    return type != ".TXT" &&
           (IsListedType(s.PictureTypes, type) || IsListedType(s.FitsClassTypes(), type) ||
            IsListedType(s.RawTypes, type));
}

} // namespace tarn
