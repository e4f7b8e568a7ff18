#include "app/walk_script.h"

#include <charconv>
#include <optional>

#include "app/walk_words.h"
#include "base/file.h"

namespace servo::app {
namespace {

constexpr int kMaxWait = 3'600'000;  // an hour
constexpr int kMaxPlace = 1'000'000;
constexpr int kMaxPixel = 10'000;

// Reads the arguments of one command. An empty result is success, anything else says what is wrong.
using Reader = std::string (*)(WalkWords&, WalkCommand&);

std::string read_name_into(WalkWords& words, std::string& into, std::string_view what) {
    into = words.next();
    return into.empty() ? "a " + std::string(what) + " is missing" : std::string{};
}

std::string read_item(WalkWords& words, WalkCommand& command) {
    return read_name_into(words, command.text, "name");
}

std::string read_window(WalkWords& words, WalkCommand& command) {
    return read_name_into(words, command.window, "window name");
}

std::string read_control(WalkWords& words, WalkCommand& command) {
    const std::string_view name = words.next();
    const std::size_t dot = name.find('.');
    if (dot == std::string_view::npos || dot == 0 || dot + 1 == name.size())
        return "WINDOW.CONTROL expected, found '" + std::string(name) + "'";
    command.window = name.substr(0, dot);
    command.control = name.substr(dot + 1);
    return {};
}

std::string read_number(WalkWords& words, int low, int high, int& into) {
    const std::string_view word = words.next();
    const std::optional<int> number = whole_number(word);
    if (!number || *number < low || *number > high)
        return "a whole number from " + std::to_string(low) + " to " + std::to_string(high) +
               " expected, found '" + std::string(word) + "'";
    into = *number;
    return {};
}

std::string read_check(WalkWords& words, WalkCommand& command) {
    if (std::string error = read_control(words, command); !error.empty()) return error;
    const std::string_view word = words.next();
    if (word != "on" && word != "off")
        return "'on' or 'off' expected, found '" + std::string(word) + "'";
    command.on = word == "on";
    return {};
}

std::string read_position(WalkWords& words, WalkCommand& command) {
    if (std::string error = read_control(words, command); !error.empty()) return error;
    return read_number(words, 0, kMaxPlace, command.number);
}

std::string read_control_text(WalkWords& words, WalkCommand& command) {
    if (std::string error = read_control(words, command); !error.empty()) return error;
    command.text = words.rest();
    return {};
}

std::string read_keys(WalkWords& words, WalkCommand& command) {
    if (std::string error = read_control(words, command); !error.empty()) return error;
    while (!words.at_end()) {
        const std::string_view word = words.next();
        const std::optional<KeyStroke> stroke = parse_key(word);
        if (!stroke) return "no key has the name '" + std::string(word) + "'";
        command.keys.push_back(*stroke);
    }
    return command.keys.empty() ? "a key is missing" : std::string{};
}

std::string read_place(WalkWords& words, WalkCommand& command) {
    if (std::string error = read_control(words, command); !error.empty()) return error;
    if (std::string error = read_number(words, 0, kMaxPlace, command.row); !error.empty())
        return error;
    return read_number(words, 0, kMaxPlace, command.column);
}

std::string read_button(WalkWords& words, bool may_double, WalkCommand& command) {
    const std::string_view word = words.next();
    if (word.empty() || word == "left") return {};
    if (word == "right") {
        command.button = WalkButton::kRight;
        return {};
    }
    if (may_double && word == "double") {
        command.button = WalkButton::kDouble;
        return {};
    }
    return "a mouse button expected, found '" + std::string(word) + "'";
}

std::string read_cell(WalkWords& words, WalkCommand& command) {
    if (std::string error = read_place(words, command); !error.empty()) return error;
    return read_button(words, true, command);
}

std::string read_edit(WalkWords& words, WalkCommand& command) {
    if (std::string error = read_place(words, command); !error.empty()) return error;
    command.text = words.rest();
    return {};
}

std::string read_drag(WalkWords& words, WalkCommand& command) {
    if (std::string error = read_control(words, command); !error.empty()) return error;
    // A drag may begin or end outside of the control.
    for (int& point : command.points) {
        if (std::string error = read_number(words, -10'000, 10'000, point); !error.empty())
            return error;
    }
    return read_button(words, false, command);
}

std::string read_box(WalkWords& words, WalkCommand& command) {
    if (std::string error = read_window(words, command); !error.empty()) return error;
    for (int& point : command.points) {
        if (std::string error = read_number(words, 0, kMaxPixel, point); !error.empty())
            return error;
    }
    return {};
}

std::string read_path(WalkWords& words, WalkCommand& command) {
    command.text = words.rest();
    return command.text.empty() ? "a path is missing" : std::string{};
}

std::string read_answer(WalkWords& words, WalkCommand& command) {
    const std::string_view word = words.next();
    if (word != "ok" && word != "cancel")
        return "'ok' or 'cancel' expected, found '" + std::string(word) + "'";
    command.on = word == "ok";
    return {};
}

std::string read_wait(WalkWords& words, WalkCommand& command) {
    return read_number(words, 0, kMaxWait, command.number);
}

std::string read_target(WalkWords& words, WalkCommand& command) {
    const std::string_view word = words.next_target();
    const std::optional<WalkTarget> target = parse_target(word);
    if (!target) return "a target expected, found '" + std::string(word) + "'";
    command.target = *target;
    return {};
}

std::string read_expect(WalkWords& words, WalkCommand& command) {
    if (std::string error = read_target(words, command); !error.empty()) return error;
    command.text = words.rest();
    return {};
}

std::string read_until(WalkWords& words, WalkCommand& command) {
    if (std::string error = read_expect(words, command); !error.empty()) return error;
    command.number = kUntilMilliseconds;
    // The limit is the last two words; whatever stands before them is the text.
    const std::size_t at = command.text.rfind("within ");
    if (at == std::string::npos || (at > 0 && command.text[at - 1] != ' ')) return {};
    WalkWords limit(std::string_view(command.text).substr(at + 7));
    const std::optional<int> number = whole_number(limit.next());
    if (!number || !limit.at_end() || *number < 0 || *number > kMaxWait) return {};
    command.number = *number;
    command.text = trimmed(std::string_view(command.text).substr(0, at));
    return {};
}

std::string read_text(WalkWords& words, WalkCommand& command) {
    command.text = words.rest();
    return {};
}

std::string read_shot(WalkWords& words, WalkCommand& command) {
    const std::string_view rest = words.rest();
    if (rest.empty()) return "a file name is missing";
    // A path may hold blanks; what follows the suffix is the window.
    const std::size_t suffix = rest.rfind(".png ");
    if (suffix != std::string_view::npos) {
        command.text = rest.substr(0, suffix + 4);
        command.window = trimmed(rest.substr(suffix + 5));
    } else {
        command.text = rest;
    }
    if (!command.text.ends_with(".png"))
        return "a file name that ends with .png expected, found '" + command.text + "'";
    if (command.window.find(' ') != std::string::npos)
        return "one window name expected, found '" + command.window + "'";
    return {};
}

std::string read_nothing(WalkWords&, WalkCommand&) {
    return {};
}

struct Verb {
    std::string_view name;
    WalkVerb verb;
    Reader read;
    bool takes_text;  // the rest of the line is a text, a path or a file
};

constexpr std::array kVerbs{
    Verb{"menu", WalkVerb::kMenu, read_item, false},
    Verb{"tool", WalkVerb::kTool, read_item, false},
    Verb{"open", WalkVerb::kOpen, read_window, false},
    Verb{"close", WalkVerb::kClose, read_window, false},
    Verb{"click", WalkVerb::kClick, read_control, false},
    Verb{"check", WalkVerb::kCheck, read_check, false},
    Verb{"choose", WalkVerb::kChoose, read_position, false},
    Verb{"tab", WalkVerb::kTab, read_position, false},
    Verb{"type", WalkVerb::kType, read_control_text, true},
    Verb{"key", WalkVerb::kKey, read_keys, false},
    Verb{"cell", WalkVerb::kCell, read_cell, false},
    Verb{"edit", WalkVerb::kEdit, read_edit, true},
    Verb{"drag", WalkVerb::kDrag, read_drag, false},
    Verb{"popup", WalkVerb::kPopup, read_item, false},
    Verb{"file", WalkVerb::kFile, read_path, true},
    Verb{"answer", WalkVerb::kAnswer, read_answer, false},
    Verb{"wait", WalkVerb::kWait, read_wait, false},
    Verb{"until", WalkVerb::kUntil, read_until, true},
    Verb{"expect", WalkVerb::kExpect, read_expect, true},
    Verb{"expect-message", WalkVerb::kExpectMessage, read_text, true},
    Verb{"print", WalkVerb::kPrint, read_target, false},
    Verb{"place", WalkVerb::kPlace, read_box, false},
    Verb{"shot", WalkVerb::kShot, read_shot, true},
    Verb{"state", WalkVerb::kState, read_path, true},
    Verb{"simulator", WalkVerb::kSimulator, read_text, true},
    Verb{"quit", WalkVerb::kQuit, read_nothing, false},
};

const Verb* find_verb(std::string_view name) {
    for (const Verb& verb : kVerbs) {
        if (verb.name == name) return &verb;
    }
    return nullptr;
}

WalkCommand bad(int line, std::string why) {
    WalkCommand command;
    command.line = line;
    command.text = std::move(why);
    return command;
}

WalkCommand parse_line(std::string_view line, int number) {
    WalkWords words(line);
    const std::string_view name = words.next();
    const Verb* verb = find_verb(name);
    if (verb == nullptr) return bad(number, "no command has the name '" + std::string(name) + "'");
    words = WalkWords(without_comment(words.rest(), verb->takes_text));
    WalkCommand command;
    command.line = number;
    command.verb = verb->verb;
    if (std::string error = verb->read(words, command); !error.empty())
        return bad(number, std::string(name) + ": " + error);
    if (!verb->takes_text && !words.at_end())
        return bad(number, std::string(name) + ": nothing more expected, found '" +
                               std::string(words.rest()) + "'");
    return command;
}

}  // namespace

std::vector<WalkCommand> parse_walk(std::string_view text) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
    std::vector<WalkCommand> commands;
    base::LineReader lines(text);
    int number = 0;
    while (const std::optional<std::string_view> line = lines.next()) {
        ++number;
        const std::string_view content = trimmed(*line);
        if (content.empty() || content.front() == '#') continue;
        commands.push_back(parse_line(content, number));
    }
    return commands;
}

std::string one_line(std::string_view text) {
    std::string line;
    line.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') continue;
        if (text[i] == '\r' || text[i] == '\n')
            line += "\\n";
        else
            line += text[i];
    }
    return line;
}

bool same_text(std::string_view shown, std::string_view wanted) {
    return trimmed(one_line(trimmed(shown))) == trimmed(wanted);
}

}  // namespace servo::app
