// Paths as text: separator, root and case rule of the system in one place. A path is bytes (UTF-8
// where it can be shown); nothing here touches the disk.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tarn {

inline constexpr char kSeparator = '/';
inline constexpr std::string_view kRoot = "/";

// Folder and name with one separator between; a folder that ends in one keeps it.
std::string JoinPath(std::string_view folder, std::string_view name);

std::vector<std::string> PathParts(std::string_view path);

// The last part, and what stands before it without the separator (the root keeps its own).
std::string LastPart(std::string_view path);
std::string FolderOf(std::string_view path);

// Separators at the end removed, except the root's.
std::string WithoutTrailingSeparator(std::string_view path);

// The last four characters in upper case, by which the program tells files apart: ".JPG", "FITS".
std::string FileTypeOf(std::string_view path);

// The file name of a picture's note.
std::string NoteNameOf(std::string_view fileName); // last four characters removed, ".enf" added

// "M31.fits.gz", "M31.fz": of a picture that is packed as a whole.
inline constexpr int kPackedEnding = 3; // characters
bool IsPackedName(std::string_view fileName);

// Whether a file type is in a list of patterns: its three characters behind the first are looked
// for anywhere in the list's text, in any case of the list.
bool IsListedType(std::string_view patterns, std::string_view fileType);

} // namespace tarn
