#include "output/sms_dataset.hpp"

#include <algorithm>

#include "output/sms_cards.hpp"
#include "text/blank_padded.hpp"

namespace nivaro {

namespace {

constexpr std::int32_t kNotOpen = -1;

std::string nameOnCard(std::string_view name) {
  std::string card = "DELH " + std::string(name.substr(0, SmsDataset::kNameLength));
  card.resize(5 + SmsDataset::kNameLength, ' ');
  return card;
}

float timeOnCard(const DatasetSettings& settings, double time, double offset) {
  return static_cast<float>(settings.timeCodeSwitch >= 1 ? time / 1000.0 + 100.0 * offset : time);
}

// Cell values averaged to the corners of a range and of the cells just before it, column by column as
// points ask for them: what a point reads is then still in the cache.
class CornerColumns {
 public:
  CornerColumns(Grid<const double> cell, Grid<double> corner, const Area& range)
      : cell_(cell), corner_(corner), range_(range), nextJ_(range.firstJ - 1) {}

  double at(int i, int j) {
    if (j >= nextJ_) fillTo(j);
    return corner_(i, j);
  }

  void fill() { fillTo(range_.lastJ); }

 private:
  void fillTo(int lastJ) {
    for (lastJ = std::min(lastJ, range_.lastJ); nextJ_ <= lastJ; ++nextJ_)
      for (int i = range_.firstI - 1; i <= range_.lastI; ++i)
        corner_(i, nextJ_) = 0.25 * (cell_(i, nextJ_) + cell_(i + 1, nextJ_) +
                                     cell_(i + 1, nextJ_ + 1) + cell_(i, nextJ_ + 1));
  }

  Grid<const double> cell_;
  Grid<double> corner_;
  Area range_;
  int nextJ_;  // the first column that is still to be filled
};

}  // namespace

SmsDataset::SmsDataset(FileUnits& files, Diagnostics& diagnostics)
    : files_(files), diagnostics_(diagnostics) {
  slots_.fill(kNotOpen);
}

void SmsDataset::open(std::string_view fileName) {
  slots_.fill(kNotOpen);
  fileName_ = fileName;
  slots_.front() = files_.openFile(fileName_, "BO", 80);
}

// Calls write(stream, whether it is the first slot) for every slot with an open file.
template <typename Write>
void SmsDataset::onOpenSlots(Write write) {
  for (const std::int32_t& slot : slots_) {
    Unit* unit = slot == kNotOpen ? nullptr : files_.find(slot);
    if (unit == nullptr) continue;
    {
      ByteStream stream(*unit);
      write(stream, &slot == slots_.data());
    }
    diagnostics_.requireWritten(unit, fileName_);
  }
}

// Puts everything written so far on the disk, so that a host that is killed loses no record.
void SmsDataset::complete() {
  for (const std::int32_t slot : slots_) {
    Unit* unit = slot == kNotOpen ? nullptr : files_.find(slot);
    if (unit == nullptr) continue;
    unit->flush();
    diagnostics_.requireWritten(unit, fileName_);
  }
}

void SmsDataset::writeHeader(std::string_view name) {
  onOpenSlots([&](ByteStream& stream, bool isFirst) {
    for (const std::int32_t value :
         {sms::kVersion, sms::kObjectType, sms::kMeshObject, sms::kFloatSize, sms::kRealBytes,
          sms::kFlagSize, sms::kFlagBytes, sms::kCard250, 0,
          isFirst ? sms::kBeginScalar : sms::kBeginVector, sms::kNumberOfValues, settings_.numData,
          sms::kNumberOfCells, settings_.numCells})
      stream.integer(value);
    if (!isFirst) diagnostics_.fatalOnScreen(".dat type not setup");
    stream.integer(sms::kName);
    stream.text(nameOnCard(name));
  });
  complete();
}

void SmsDataset::writeFlags(const DomainTurn& turn, const CellFlags& flags, const Area& range) {
  if (turn.domain == 1) flagsWritten_ = 0;

  const std::int32_t before = flagsWritten_;
  onOpenSlots([&](ByteStream& stream, bool) {
    if (turn.domain == 1) {
      stream.integer(sms::kTimeStep);
      stream.flag(sms::kFlagsFollow);
      stream.real(timeOnCard(settings_, flags.time, flags.timeOffset));
    }
    flagsWritten_ = before;
    FlagStrip strip(flags, settings_.flagDepthThreshold, range);
    for (int i = range.firstI; i <= range.lastI; i += FlagStrip::kRows) {
      strip.gather(i);
      for (int r = 0; r < strip.rows(); ++r) {
        const std::span<const std::uint8_t> row = strip.row(r);
        stream.bytes(row);
        flagsWritten_ += static_cast<std::int32_t>(row.size());
      }
    }
    if (turn.domain != turn.lastDomain) return;
    for (std::int32_t n = flagsWritten_; n < settings_.numCells; ++n) stream.flag(false);
  });
}

void SmsDataset::writeValues(const DomainTurn& turn, std::int32_t pointCount,
                             const std::optional<CornerValues>& values, const Area& range) {
  if (turn.domain == 1) valuesWritten_ = 0;

  onOpenSlots([&](ByteStream& stream, bool isFirst) {
    if (isFirst) {
      if (values) {
        CornerColumns corners(values->cellBedChange, values->cornerBedChange, range);
        stream.reals(values->pointI.size(), [&](std::size_t p) {
          return static_cast<float>(corners.at(values->pointI[p], values->pointJ[p]));
        });
        corners.fill();
      } else {
        for (std::int32_t p = 0; p < pointCount; ++p) stream.real(0.0F);
      }
      valuesWritten_ += pointCount;
    }
    if (turn.domain != turn.lastDomain) return;
    for (std::int32_t n = valuesWritten_; n < settings_.numData; ++n) stream.real(0.0F);
  });
  if (turn.domain == turn.lastDomain) complete();
}

void SmsDataset::writeEnd() {
  onOpenSlots([](ByteStream& stream, bool) { stream.integer(sms::kEndOfDataset); });
  complete();
}

}  // namespace nivaro
