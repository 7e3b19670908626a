#pragma once

#include "macos/shell/runtime/MessageSend.h"

#include <string>

namespace orvantile::test {

/// The selector with its arguments, such as `setFrame:{0, 0, 200, 60} display:YES`.
/// `types`: how the compiler has encoded the method's types.
[[nodiscard]] std::string messageText(const char* selector, const char* types,
                                      const objc::Arguments& arguments);

/// A text for an object of the fakes: a string in quotes, the names of what has names, nil.
[[nodiscard]] std::string objectText(const void* object);

} // namespace orvantile::test
