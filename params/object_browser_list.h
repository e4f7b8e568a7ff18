// The list of the dictionary browser, `MSHFlexGrid2`: nine columns over the dictionary store, and
// the search in it. Rows are counted as on screen: row 0 is the header, objects stand from row 1
// on.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "base/language.h"
#include "dictionary/store.h"

namespace servo::params {

enum ListColumn : std::uint8_t {
    kListIndex,  // four hexadecimal digits
    kListSub,    // two
    kListNameCh,
    kListNameEn,
    kListAttribute,
    kListType,  // dictionary word
    kListCommentCh,
    kListCommentEn,
    kListFormula,
};
inline constexpr int kListColumns = 9;

// The header cell of a column. Only the first two have a text for each language.
std::string_view list_header(int column, base::Language language);

// What stands over the column on screen: the same, but in the language of the reader where the
// header cell has no such text.
std::string_view list_title(int column, base::Language language);

// Width of a column in a list of that width; 0 for a hidden one. The name of the current language
// has 5.5 tenths. What all leave free is for the scroll bar.
int list_column_width(int column, int list_width, base::Language language);

// As the program's own comparisons do: every letter that the dictionary's code page holds in two
// cases, so Greek, Cyrillic, full-width letters and Roman numerals too.
std::string lower_case(std::string_view text);

// What the search looks at in a row: index and sub-index as one run, the two names, a blank between
// each, in lower case.
std::string search_text(const dictionary::Store& dictionary, int row);

// Finds rows by a text that their search text contains. The texts are made at the first search, so
// that the start of the program does not wait for them.
class ListSearch {
  public:
    explicit ListSearch(const dictionary::Store& dictionary) : dictionary_(dictionary) {}

    // The dictionary has been loaded: texts made before are no longer true.
    void forget();

    // The next match below a row, going round behind the last row; the row itself comes last. 0
    // when there is none. An empty text matches every row.
    int next(std::string_view text, int row);
    // The same upwards.
    int previous(std::string_view text, int row);

    struct Place {
        int position = 0;  // of the row among the matches, from 1; 0 when it is none
        int count = 0;
        bool operator==(const Place&) const = default;
    };
    Place place(std::string_view text, int row);

  private:
    const std::vector<int>& matches(std::string_view text);
    void make_texts();
    int rows() const { return static_cast<int>(dictionary_.dictionary_rows()) + 1; }

    const dictionary::Store& dictionary_;
    std::string texts_;              // of all rows, one behind the other
    std::vector<std::size_t> ends_;  // of each text
    std::string matched_;            // what matches_ belongs to
    std::vector<int> matches_;       // in order
    bool matches_known_ = false;
};

}  // namespace servo::params
