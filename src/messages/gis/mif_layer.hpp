// A layer as a MIF/MID pair.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "files/file_units.hpp"
#include "messages/gis/layer_settings.hpp"
#include "messages/gis/object.hpp"
#include "messages/gis/report.hpp"

namespace nivaro::gis {

class MifLayer {
 public:
  explicit MifLayer(FileUnits& files) : files_(files) {}

  MaybeFailure open(const LayerSettings& settings);

  // Written after every object that has geometry; at most 256 characters each.
  void setStyle(std::string_view line1, std::string_view line2);

  // The object, with a blank record that holds the place of its attributes: the pair on the disk is
  // whole after this call as after the next, wherever a host is killed.
  MaybeFailure writeObject(const Object& object);

  // The attributes of the earliest object that has none yet.
  MaybeFailure writeRecord(const Object& object, std::string_view attributes);

  MaybeFailure close();

 private:
  bool putRecords(std::string_view given);

  FileUnits& files_;
  std::string name_;
  std::int32_t mifUnit_ = 0;
  std::int32_t midUnit_ = 0;
  std::string noAttributes_;      // a record of empty values
  int recordsDue_ = 0;            // objects whose record has not come yet
  std::uint64_t recordsEnd_ = 0;  // where the records that have come end in the .mid file
  std::string style1_;
  std::string style2_;
};

}  // namespace nivaro::gis
