#include <algorithm>
#include <cctype>

#include "base/ascii.h"
#include "cli/commands.h"
#include "dictionary/keys.h"

namespace servo::cli {
namespace {

// Columns of the dictionary table.
enum Column : std::size_t {
    kIndex,
    kSub,
    kNameCh,
    kNameEn,
    kAttribute,
    kType,
    kCommentCh,
    kCommentEn,
    kFormula
};

// A field without its padding.
std::string cell(const dictionary::Store& dictionary, std::size_t row, std::size_t column) {
    std::string text = dictionary.dictionary_cell(row, column);
    const std::size_t last = text.find_last_not_of(std::string_view(" \n\0", 3));
    text.erase(last == std::string::npos ? 0 : last + 1);
    return text;
}

// The browser's search runs on the same joined text, so both find the same rows.
std::string searched_text(const dictionary::Store& dictionary, std::size_t row) {
    return base::ascii_lower(cell(dictionary, row, kIndex) + cell(dictionary, row, kSub) + " " +
                             cell(dictionary, row, kNameCh) + " " + cell(dictionary, row, kNameEn));
}

// The short name where there is one, else the word of the file.
std::string type_text(const std::string& word) {
    const std::string_view name = dictionary::short_type(word);
    return name.empty() ? word : std::string(name);
}

std::optional<std::size_t> find_row(const dictionary::Store& dictionary, dictionary::Identity key) {
    for (std::size_t row = 0; row < dictionary.dictionary_rows(); ++row) {
        if (dictionary.row_identity(row) == key) return row;
    }
    return std::nullopt;
}

// Empty for an object without a Modbus address.
std::string modbus_address(const dictionary::Store& dictionary, std::string_view index,
                           std::string_view sub) {
    for (std::size_t row = 0; row < dictionary.modbus_rows(); ++row) {
        if (dictionary.modbus_cell(row, 1) != index || dictionary.modbus_cell(row, 2) != sub)
            continue;
        const std::string address = dictionary.modbus_cell(row, 0);
        return address.find_first_not_of(' ') == std::string::npos ? std::string{} : address;
    }
    return {};
}

}  // namespace

ExitStatus run_dict_find(const Options& options, const dictionary::Store& dictionary,
                         const Output& output) {
    const std::string wanted = base::ascii_lower(options.text);
    const bool english = options.language == base::Language::kEnglish;
    RowPrinter printer(output, options.json, {"key", "type", "attribute", "name"});
    bool any = false;
    for (std::size_t row = 0; row < dictionary.dictionary_rows(); ++row) {
        if (searched_text(dictionary, row).find(wanted) == std::string::npos) continue;
        any = true;
        printer.row({key_text(dictionary.row_identity(row)),
                     type_text(cell(dictionary, row, kType)), cell(dictionary, row, kAttribute),
                     cell(dictionary, row, english ? kNameEn : kNameCh)});
    }
    printer.finish();
    if (any) return ExitStatus::kDone;
    output.message("servoctl: nothing in the dictionary matches '" + options.text + "'");
    return ExitStatus::kNo;
}

ExitStatus run_dict_show(const Options& options, const dictionary::Store& dictionary,
                         const Output& output) {
    const dictionary::Identity key = options.keys.front();
    const std::optional<std::size_t> row = find_row(dictionary, key);
    if (!row) {
        output.message("servoctl: " + key_text(key) + " is not in the dictionary");
        return ExitStatus::kWrongUse;
    }
    const auto field = [&](Column column) { return Field(cell(dictionary, *row, column)); };
    const std::string index = dictionary.dictionary_cell(*row, kIndex);
    const std::string sub = dictionary.dictionary_cell(*row, kSub);
    print_record(output, options.json,
                 {{"key", key_text(key)},
                  {"index", index},
                  {"sub", sub},
                  {"name_ch", field(kNameCh)},
                  {"name_en", field(kNameEn)},
                  {"type", field(kType)},
                  {"attribute", field(kAttribute)},
                  {"formula", field(kFormula)},
                  {"modbus", modbus_address(dictionary, index, sub)},
                  {"comment_ch", field(kCommentCh)},
                  {"comment_en", field(kCommentEn)}});
    return ExitStatus::kDone;
}

ExitStatus run_ports(const Options& options, const std::vector<link::PortDirectory::Entry>& ports,
                     const Output& output) {
    RowPrinter printer(output, options.json, {"port", "device", "description"});
    for (const link::PortDirectory::Entry& port : ports)
        printer.row({port.text, port.device, port.description});
    printer.finish();
    return ExitStatus::kDone;
}

}  // namespace servo::cli
