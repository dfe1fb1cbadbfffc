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

    /// Page 0. The masked stretch starts at `mask_start`; the rest of the page is plain.
    struct Header {
        std::size_t mask_start, mask_size;
        std::size_t page_key; ///< not zero: the pages are encoded
        std::size_t password; ///< zeros where there is none, after `password_date`'s mask
        std::size_t password_size;
        std::size_t password_date; ///< 8 bytes whose whole part masks the password; 0 for no such mask
        std::size_t text_order;
        std::size_t commit_bytes; ///< 16-bit counters, one for each user
        std::size_t commit_count;
    } header;

    /// Pages of rows, long values and small usage maps.
    struct DataPage {
        std::size_t free_space, owner, long_value_stamp, row_count, slots;
        std::uint16_t offset_mask;
        std::size_t most_rows;
        std::size_t longest_row;
    } data;

    /// Rows: how wide their counts and offsets are.
    struct RowFormat {
        std::size_t count_size; ///< of the column count, the variable count and each variable offset
        bool jump_table;
    } row;

    /// Long values.
    struct LongValue {
        std::size_t longest_inline;
        std::size_t longest_single; ///< what one page takes before a chain is needed
        std::size_t piece;          ///< what one page of a chain takes, its pointer not counted
    } long_value;

    /// Table definitions: the fixed block at the front, counted from the first page's start.
    struct Definition {
        std::size_t length, row_count, last_auto, auto_step, kind;
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
        std::size_t type, id, variable_index, position, text_order, text_order_version, precision, scale;
        std::size_t flags, more_flags, fixed_offset, length;
    } column;

    struct RealIndex {
        std::size_t size;
        std::size_t parts, owned_map, root, flags;
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

    /// Bytes for one character of text, and the most characters a compressed value may have.
    std::size_t character_size;
    std::size_t longest_compressed;
};

extern const Format jet4_format;

} // namespace tolva::jet
