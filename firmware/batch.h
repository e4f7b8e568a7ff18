// The batch file of a production line: a sectioned key file with one section for each product,
// which tells what its barcodes look like and which image it gets.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace servo::firmware {

// Texts as the file has them, in UTF-8.
struct Product {
    std::string SN_Compare;   // text that must stand in the barcode
    std::string Compare_Pos;  // its 1-based position there
    std::string SN_Length;    // characters of the barcode
    std::string FW_Name;      // file name of the image, an alias already resolved
};

// The section of that name (UTF-8) in a file's bytes. Nothing when any of the four keys is missing
// or empty.
std::optional<Product> find_product(std::string_view content, std::string_view name);

enum class Barcode : std::uint8_t {
    kMatches,
    kWrongLength,
    kNoMatch,
    kBadPosition,  // a position below 1: there is no such place
};

// The barcode against what the form shows of its product.
Barcode check_barcode(std::string_view barcode, const Product& shown);

// The path of an image that lies beside the batch file.
std::filesystem::path image_beside(std::string_view ini_path, std::string_view file_name);

}  // namespace servo::firmware
