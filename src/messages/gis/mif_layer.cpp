#include "messages/gis/mif_layer.hpp"

#include "messages/gis/layer_files.hpp"
#include "messages/gis/mif_text.hpp"
#include "text/blank_padded.hpp"

namespace nivaro::gis {

namespace {

constexpr std::size_t kStyleLength = 256;
constexpr std::string_view kMifFailure = "ERROR 0439 - Writing .mif file object coordinates.";

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
  Unit* mif = files_.find(mifUnit_);
  if (mif == nullptr || !writeMifObject(*mif, object)) return Failure{std::string(kMifFailure)};
  ++recordsDue_;
  if (!isDrawable(object)) return {};

  for (const std::string& style : {style1_, style2_})
    if (!style.empty() && !mif->writeRecord(style)) return Failure{std::string(kMifFailure)};
  return {};
}

MaybeFailure MifLayer::writeRecord(const Object& object, std::string_view attributes) {
  // Attributes first: a line too many is passed over by readers, a line too few is not.
  Unit* mid = files_.find(midUnit_);
  if (mid == nullptr || !mid->writeRecord(trimmed(attributes)) || !mid->flush())
    return Failure{"ERROR 0254 - Failed to write attribute data record for a " + object.name};
  if (recordsDue_ > 0) --recordsDue_;
  Unit* mif = files_.find(mifUnit_);
  if (mif == nullptr || !mif->flush()) return Failure{std::string(kMifFailure)};
  return {};
}

MaybeFailure MifLayer::close() {
  // A run that ended between an object and its record leaves a blank one.
  MaybeFailure failure;
  while (recordsDue_ > 0 && !failure) failure = writeRecord({}, noAttributes_);
  Unit* mif = files_.find(mifUnit_);
  const bool written = mif != nullptr && mif->flush();
  files_.closeFile(mifUnit_);
  files_.closeFile(midUnit_);
  if (!written && !failure) failure = Failure{std::string(kMifFailure)};
  return failure;
}

}  // namespace nivaro::gis
