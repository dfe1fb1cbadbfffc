#pragma once

#include <cstdint>
#include <cstring>
#include <span>
#include <string>

namespace tolva::jet {

// The file's numbers are little-endian. These take places that the caller has already found to lie inside.

inline std::uint16_t get16(const std::uint8_t* at) {
    return static_cast<std::uint16_t>(at[0] | at[1] << 8);
}

inline std::uint32_t get24(const std::uint8_t* at) {
    return static_cast<std::uint32_t>(at[0]) | static_cast<std::uint32_t>(at[1]) << 8 |
           static_cast<std::uint32_t>(at[2]) << 16;
}

inline std::uint32_t get32(const std::uint8_t* at) {
    return get24(at) | static_cast<std::uint32_t>(at[3]) << 24;
}

inline std::uint64_t get64(const std::uint8_t* at) {
    return get32(at) | static_cast<std::uint64_t>(get32(at + 4)) << 32;
}

inline double get_double(const std::uint8_t* at) {
    const std::uint64_t bits = get64(at);
    double value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

inline float get_float(const std::uint8_t* at) {
    const std::uint32_t bits = get32(at);
    float value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

inline void put16(std::uint8_t* at, std::size_t value) {
    at[0] = static_cast<std::uint8_t>(value);
    at[1] = static_cast<std::uint8_t>(value >> 8);
}

inline void put24(std::uint8_t* at, std::uint32_t value) {
    put16(at, value & 0xffff);
    at[2] = static_cast<std::uint8_t>(value >> 16);
}

inline void put32(std::uint8_t* at, std::uint32_t value) {
    put24(at, value);
    at[3] = static_cast<std::uint8_t>(value >> 24);
}

inline void put64(std::uint8_t* at, std::uint64_t value) {
    put32(at, static_cast<std::uint32_t>(value));
    put32(at + 4, static_cast<std::uint32_t>(value >> 32));
}

inline void put_double(std::uint8_t* at, double value) {
    std::uint64_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    put64(at, bits);
}

inline void put_float(std::uint8_t* at, float value) {
    std::uint32_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    put32(at, bits);
}

} // namespace tolva::jet
