// Card numbers of the SMS binary dataset format, and the fixed values behind them.
#pragma once

#include <cstdint>

namespace nivaro::sms {

inline constexpr std::int32_t kVersion = 3000;
inline constexpr std::int32_t kObjectType = 100;
inline constexpr std::int32_t kFloatSize = 110;
inline constexpr std::int32_t kFlagSize = 120;
inline constexpr std::int32_t kBeginScalar = 130;
inline constexpr std::int32_t kBeginVector = 140;
inline constexpr std::int32_t kNumberOfValues = 170;
inline constexpr std::int32_t kNumberOfCells = 180;
inline constexpr std::int32_t kName = 190;
inline constexpr std::int32_t kTimeStep = 200;
inline constexpr std::int32_t kEndOfDataset = 210;
inline constexpr std::int32_t kCard250 = 250;

inline constexpr std::int32_t kMeshObject = 3;
inline constexpr std::int32_t kRealBytes = 4;
inline constexpr std::int32_t kFlagBytes = 1;
inline constexpr bool kFlagsFollow = true;

}  // namespace nivaro::sms
