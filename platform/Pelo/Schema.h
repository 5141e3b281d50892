#pragma once

#include "Pelo/Layout.h"

#include <concepts>
#include <string_view>

namespace [[gnu::visibility("default")]] Pelo {

/// Defines what a table holds: the types of key and value, their encodings of fixed
/// length, and the tag that identifies the kind of table. A default value means "not
/// there". Decoding accepts any bytes.
template <class S>
concept Schema = requires(typename S::Key const & key, typename S::Value const & value, U8 * out,
                          U8 const * in) {
    requires std::equality_comparable<typename S::Value>;
    requires std::default_initializable<typename S::Key>;
    requires std::default_initializable<typename S::Value>;
    requires !S::tag.empty() && S::tag.size() <= Format::maxTagLength;
    requires S::keySize >= 1;
    requires S::valueSize >= 0;
    S::encodeKey(key, out);
    S::encodeValue(value, out);
    { S::decodeKey(in) } -> std::same_as<typename S::Key>;
    { S::decodeValue(in) } -> std::same_as<typename S::Value>;
};

template <Schema S>
inline constexpr Format formatOf{S::tag, S::keySize, S::valueSize};

} // namespace Pelo
