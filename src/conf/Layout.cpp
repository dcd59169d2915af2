#include "conf/Layout.h"
namespace quenmar {
LaidOut LayOut(const ConfFile& base, const ConfFile&, const Wishes&, const Options&, const Language&) { return {base.Bytes(), base.Charset(), {}}; }
}
