#pragma once

#include <cstddef>
#include <vector>

#include "jet/table.h"

namespace tolva::sql {

/// The columns that a query asks for, of the row at hand: each is decoded at most once a row, and only when
/// it is first wanted.
class RowValues {
  public:
    /// The slot of a column, the same one however often it is asked for.
    std::size_t add_column(std::size_t column) {
        for (std::size_t slot = 0; slot < slots_.size(); ++slot)
            if (slots_[slot].column == column)
                return slot;
        slots_.push_back({column, 0, {}});
        return slots_.size() - 1;
    }

    void go_to(const jet::RowReader& row) {
        row_ = &row;
        ++generation_;
    }

    const jet::Value& at(std::size_t slot) {
        Slot& wanted = slots_[slot];
        if (wanted.generation != generation_) {
            row_->read_into(wanted.column, wanted.value);
            wanted.generation = generation_;
        }
        return wanted.value;
    }

  private:
    struct Slot {
        std::size_t column;
        std::size_t generation; ///< of the row whose value this is
        jet::Value value;
    };

    std::vector<Slot> slots_;
    const jet::RowReader* row_ = nullptr;
    std::size_t generation_ = 0;
};

} // namespace tolva::sql
