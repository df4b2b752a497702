#include "messages/gis/mif_layer.hpp"

#include <algorithm>
#include <span>

#include "messages/gis/layer_files.hpp"
#include "messages/gis/mif_text.hpp"
#include "platform/native_file.hpp"
#include "text/blank_padded.hpp"

namespace nivaro::gis {

namespace {

constexpr std::size_t kStyleLength = 256;
constexpr std::string_view kMifFailure = "ERROR 0439 - Writing .mif file object coordinates.";

// Commas that are not part of a text.
std::size_t separators(std::string_view record) {
  bool quoted = false;
  return static_cast<std::size_t>(std::count_if(record.begin(), record.end(), [&](char c) {
    if (c == '"') quoted = !quoted;
    return c == ',' && !quoted;
  }));
}

Failure recordFailure(const Object& object) {
  return {"ERROR 0254 - Failed to write attribute data record for a " + object.name};
}

}  // namespace

MaybeFailure MifLayer::open(const LayerSettings& settings) {
  name_ = settings.name;
  noAttributes_.assign(settings.columns.size() - 1, ',');
  if (auto failure = openLayerFile(files_, name_ + ".mif", "O ", mifUnit_)) return failure;
  if (auto failure = openLayerFile(files_, name_ + ".mid", "O ", midUnit_)) return failure;

  Unit* mif = files_.find(mifUnit_);
  if (!writeMifHeader(*mif, settings.coordSys, settings.columns) || !mif->flush())
    return headerFailure(name_ + ".mif");
  return {};
}

void MifLayer::setStyle(std::string_view line1, std::string_view line2) {
  style1_ = trimmed(line1.substr(0, kStyleLength));
  style2_ = trimmed(line2.substr(0, kStyleLength));
}

MaybeFailure MifLayer::writeObject(const Object& object) {
  // The object's blank record first: readers pass over a record too many, but not over an object
  // that has none.
  ++recordsDue_;
  if (!putRecords("")) return recordFailure(object);

  Unit* mif = files_.find(mifUnit_);
  if (mif == nullptr || !writeMifObject(*mif, object)) return Failure{std::string(kMifFailure)};
  for (const std::string& style : {style1_, style2_})
    if (isDrawable(object) && !style.empty()) mif->writeRecord(style);
  if (!mif->flush()) return Failure{std::string(kMifFailure)};
  return {};
}

MaybeFailure MifLayer::writeRecord(const Object& object, std::string_view attributes) {
  std::string record(trimmed(attributes));
  // Readers give up the rest of a layer behind a record with fewer values than columns.
  for (std::size_t commas = separators(record); commas < noAttributes_.size(); ++commas)
    record += ',';
  record += lineEnd();
  if (recordsDue_ > 0) --recordsDue_;
  if (!putRecords(record)) return recordFailure(object);
  return {};
}

MaybeFailure MifLayer::close() {
  // All has been written, unless the file was taken away.
  const Unit* mif = files_.find(mifUnit_);
  const bool written = mif != nullptr && mif->failure().empty();
  files_.closeFile(mifUnit_);
  files_.closeFile(midUnit_);
  if (!written) return Failure{std::string(kMifFailure)};
  return {};
}

// The records given, and behind them a blank one for each object that still waits for its own.
bool MifLayer::putRecords(std::string_view given) {
  std::string text(given);
  for (int i = 0; i < recordsDue_; ++i) text.append(noAttributes_).append(lineEnd());
  Unit* mid = files_.find(midUnit_);
  if (mid == nullptr || !mid->overwriteBytes(recordsEnd_, std::as_bytes(std::span(text))))
    return false;
  recordsEnd_ += given.size();
  return true;
}

}  // namespace nivaro::gis
