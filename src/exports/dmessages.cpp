// The message record that is shared with the host: zero at load, found by its name, which a host
// that defines a block of the same name and size shares. The offsets are part of the interface.
#include <cstddef>

#include "nivaro_morphology.h"

static_assert(offsetof(nivaro_messages, log_unit) == 0);
static_assert(offsetof(nivaro_messages, line1) == 4);
static_assert(offsetof(nivaro_messages, line4) == 30004);
static_assert(offsetof(nivaro_messages, location_tag) == 40004);
static_assert(offsetof(nivaro_messages, label_box_width) == 40016);
static_assert(offsetof(nivaro_messages, error_count) == 40032);
static_assert(offsetof(nivaro_messages, message_number) == 40056);
static_assert(offsetof(nivaro_messages, detail1) == 40064);
static_assert(offsetof(nivaro_messages, message_table_unit) == 70064);
static_assert(offsetof(nivaro_messages, last_x) == 70072);
static_assert(offsetof(nivaro_messages, one_line_flag) == 70088);
static_assert(offsetof(nivaro_messages, reference_link) == 70100);
static_assert(offsetof(nivaro_messages, default_x) == 70168);
static_assert(offsetof(nivaro_messages, unlocated_spacing) == 70184);
static_assert(offsetof(nivaro_messages, suppression_flag) == 70204);
static_assert(sizeof(nivaro_messages) == 70208);

nivaro_messages DMESSAGES = {};

nivaro_messages* DMESSAGESADDRESS() noexcept {
  return &DMESSAGES;
}
