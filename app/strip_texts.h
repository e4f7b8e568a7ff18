// The texts of the status bar's cells. Numbers change all the time, so each cell also says how wide
// it can become.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "app/link_meter.h"
#include "base/language.h"

namespace servo::app {

struct StripTexts {
    std::string state;    // of the link, in words
    std::string picture;  // its name; the shape tells the state without the colour
    std::string port;     // "COM3  38400", or that there is none
    std::string objects;
    std::string misses;
    std::string load;
};

StripTexts strip_texts(const LinkFigures& figures, base::Language language);

// The widest that the cells get in a language: every state's text is no wider than the widest of
// these in its place.
std::vector<StripTexts> widest_strip_texts(base::Language language);

// What a cell is, for tool tips and screen readers.
struct StripNames {
    std::string_view state, port, objects, misses, load;
};
StripNames strip_names(base::Language language);

}  // namespace servo::app
