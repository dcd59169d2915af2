#pragma once

#include "text/String.h"

namespace quenmar {

/// Replaces "&", "<" and ">" by "&amp;", "&lt;" and "&gt;", in this order and in the caller's text.
/// Quotes and apostrophes stay.
/// @return `text`.
String& XmlEscape(String& text);

/// Replaces "&amp;", "&lt;" and "&gt;" by "&", "<" and ">", in this order and in the caller's text.
/// "&amp;" is undone first on purpose: field values that contain an entity form change because of
/// it.
/// @return `text`.
String& XmlUnescape(String& text);

}  // namespace quenmar
