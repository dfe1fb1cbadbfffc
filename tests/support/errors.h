#pragma once

#include <string>

#include "basic/run_time_error.h"

namespace tolva::support {

/// The number of the run-time error that `action` ends in, 0 when it ends well.
template <typename Action>
int error_number(Action action) {
    try {
        action();
    } catch (const basic::RunTimeError& error) {
        return error.number();
    }
    return 0;
}

/// The text of that error, "" when there is none.
template <typename Action>
std::string error_text(Action action) {
    try {
        action();
    } catch (const basic::RunTimeError& error) {
        return error.text();
    }
    return {};
}

} // namespace tolva::support
