#pragma once

#include <cstddef>
#include <cstdint>

namespace tolva::jet {

/// Everything in which the versions of the file differ, in one place. Offsets and sizes are bytes; an offset
/// counts from the start of the structure that its group names.
struct Format {
    enum class Version { jet3, jet4 };

    Version version;
    std::size_t page_size;
    std::uint64_t longest_file; ///< what its maps can tell of, in round numbers

    /// Whose bytes the file's text is made of, where a character is one byte; a file's own number stands in
    /// its header.
    int code_page;

    /// Page 0. The masked stretch starts at `mask_start`; the rest of the page is plain.
    struct Header {
        std::size_t mask_start, mask_size;
        std::size_t code_page, page_key; ///< a page key that is not zero: the pages are encoded
        std::size_t password;            ///< zeros where there is none, after `password_date`'s mask
        std::size_t password_size;
        std::size_t password_date; ///< 8 bytes whose whole part masks the password; 0 for no such mask
        std::size_t text_order;
        std::size_t commit_bytes; ///< 16-bit counters, one for each user
        std::size_t commit_count;
    } header;

    /// Pages of rows, long values and small usage maps.
    struct DataPage {
        std::size_t free_space, owner;
        std::size_t long_value_stamp; ///< 0 for no such stamp
        std::size_t row_count, slots;
        std::uint16_t offset_mask;
        std::size_t most_rows;
        std::size_t longest_row;
    } data;

    /// Rows: how wide their counts and offsets are.
    struct RowFormat {
        std::size_t count_size; ///< of the column count, the variable count and each variable offset
        bool jump_table;        ///< tells which of the offsets lie 256 bytes further, and so on
    } row;

    /// Long values.
    struct LongValue {
        std::size_t longest_inline;
        std::size_t longest_single; ///< what one page takes before a chain is needed
        std::size_t piece;          ///< what one page of a chain takes, its pointer not counted
    } long_value;

    /// Table definitions: the fixed block at the front, counted from the first page's start.
    struct Definition {
        std::size_t length;
        std::size_t magic; ///< of the same number in every definition; 0 for none, here and below
        std::size_t row_count, last_auto, auto_step, kind;
        std::size_t most_columns, variable_columns, columns;
        std::size_t logical_indexes, real_indexes, owned_map, free_map;
        std::size_t end; ///< where the real indexes' counters start
        std::size_t name_count_size;
    } definition;

    struct IndexCounter {
        std::size_t size, unique_entries;
    } index_counter;

    struct Column {
        std::size_t size;
        std::size_t type, magic, id, variable_index, position;
        std::size_t text_order, text_order_version, code_page; ///< the last two 0 where there is none
        std::size_t precision, scale;
        std::size_t flags, more_flags; ///< the latter 0 for none
        std::size_t fixed_offset, length;
    } column;

    struct RealIndex {
        std::size_t size;
        bool has_magic; ///< in its first bytes, as has a logical index
        std::size_t parts, owned_map, root, flags;
        std::uint8_t usual_flag; ///< that every index has
    } real_index;

    struct LogicalIndex {
        std::size_t size;
        std::size_t number, real_number, relation, kind;
    } logical_index;

    /// Usage maps.
    struct Map {
        std::size_t inline_size; ///< of the whole record
        std::size_t page_bits;   ///< where the bits of a map page start
    } map;

    /// Of an index, the row that it stands for not counted.
    std::size_t longest_key;

    /// Bytes for one character of text, and the most characters a compressed value may have.
    std::size_t character_size;
    std::size_t longest_compressed;
};

/// The files of "97": pages of 2048 bytes, text of one byte a character.
extern const Format jet3_format;
/// Those of 2000 to 2003: pages of 4096 bytes, text of two bytes a character, or compressed.
extern const Format jet4_format;

} // namespace tolva::jet
