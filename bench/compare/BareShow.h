#pragma once

#include <string>

// A window that shows the file at start; each key shows the next of its folder, in the order of
// names. With four to a screen each key decodes one picture more and the others move up.
int BareShow(int argc, char** argv, int toAScreen, const std::string& file);
