// A store that has loaded just these records.
#pragma once

#include <string>
#include <vector>

#include "dictionary/raw_record.h"
#include "dictionary/store.h"

namespace servo::dictionary {

inline Store store_of(const std::vector<RawRecord>& records) {
    std::string bytes;
    for (const RawRecord& record : records)
        bytes += record.bytes();
    Store store;
    store.load(bytes);
    return store;
}

}  // namespace servo::dictionary
