#include "files/file_units.hpp"

#include <algorithm>
#include <string>

#include "files/open_dialogue.hpp"
#include "files/pause.hpp"
#include "platform/fixed_field.hpp"
#include "platform/support.hpp"
#include "text/blank_padded.hpp"

namespace nivaro {
namespace {

constexpr std::int32_t kLowestBase = 9;
constexpr std::size_t kNameLength = 1000;
constexpr std::size_t kModeLength = 2;

}  // namespace

FileUnits::FileUnits(Console& console, Process& process, UnitTable& units, Termination& termination)
    : console_(console), process_(process), units_(units), termination_(termination) {}

void FileUnits::initFileUnits(std::int32_t base) {
  base_ = std::max(base, kLowestBase);
  inUse_.fill(false);
  termination_.switchOnPromptAndExitCode();
}

std::int32_t FileUnits::openFile(std::string_view name, std::string_view mode,
                                 std::int32_t recordLength) {
  const std::string_view wanted = trimmed(leftTrimmed(name).substr(0, kNameLength));
  if (wanted.empty()) endForBlankName();

  const auto free = std::find(inUse_.begin(), inUse_.end(), false);
  if (free == inUse_.end()) {
    console_.line("No free file numbers.");
    endProcess(process_, 1);
  }
  const auto slot = static_cast<std::size_t>(free - inUse_.begin());
  OpenDialogue dialogue(console_, process_, units_, termination_);
  OpenRequest request{numberOf(slot), std::string(wanted), padTo(mode, kModeLength), recordLength};
  const std::int32_t unit = dialogue.openUnit(request);
  inUse_[slot] = unit != 0;
  names_[slot] = request.name;
  return unit;
}

void FileUnits::closeFile(std::int32_t& unit) {
  const std::optional<std::size_t> slot = slotInUse(unit);
  if (!slot) return;
  closeReporting(unit);
  console_.line("...Closed File Unit:" + integerField(unit, 4));
  inUse_[*slot] = false;
  unit = 0;
}

void FileUnits::closeAllAtExit() {
  for (std::size_t slot = 0; slot < inUse_.size(); ++slot) {
    if (!inUse_[slot]) continue;
    const Unit* file = units_.find(numberOf(slot));
    const bool alreadyFailed = file != nullptr && !file->failure().empty();
    if (alreadyFailed)
      units_.close(numberOf(slot));  // known, and dealt with, since it happened
    else if (!closeReporting(numberOf(slot)))
      endProcess(process_, 1);
  }
}

std::string FileUnits::nameOf(std::int32_t unit) const {
  const std::optional<std::size_t> slot = slotInUse(unit);
  return slot ? names_[*slot] : std::string();
}

std::int32_t FileUnits::numberOf(std::size_t slot) const {
  return base_ + static_cast<std::int32_t>(slot) + 1;
}

std::optional<std::size_t> FileUnits::slotInUse(std::int32_t unit) const {
  const std::int64_t slot = std::int64_t{unit} - base_ - 1;
  if (slot < 0 || slot >= kSlots) return std::nullopt;
  const auto index = static_cast<std::size_t>(slot);
  return inUse_[index] ? std::optional(index) : std::nullopt;
}

bool FileUnits::closeReporting(std::int32_t unit) {
  Unit* file = units_.find(unit);
  if (file == nullptr) return true;
  const bool allWritten = file->close();
  if (!allWritten) console_.line("Could not write all of " + file->path() + ": " + file->failure());
  units_.close(unit);
  return allWritten;
}

void FileUnits::endForBlankName() {
  console_.line("");
  console_.line("Empty filename specified.  Bailing out.  Please contact support " +
                std::string(kSupportAddress) + ".");
  pauseWithPrompt(console_, kClosePrompt);
  endProcess(process_, 1);
}

}  // namespace nivaro
