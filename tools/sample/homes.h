#pragma once

namespace tolva::sample {

// Entries of the delivered lists.
inline constexpr const char* constructions[] = {"Brick", "Frame", "Stucco", "Stone", "Log", "Vinyl"};
inline constexpr const char* basements[] = {"Full", "Partial", "Crawl", "Slab", "Finished"};
inline constexpr const char* garages[] = {"1 Car", "2 Car", "3 Car", "Carport", "None"};
inline constexpr const char* sources[] = {"Sign",       "Newspaper", "Referral",
                                          "Open House", "Web Site",  "Phone Call"};

} // namespace tolva::sample
