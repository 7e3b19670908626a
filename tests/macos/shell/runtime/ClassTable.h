#pragma once

#include "macos/shell/runtime/Abi.h"

#include <string>

namespace orvantile::test::objc {

/// Ends the program: the code under test has misused the runtime.
[[noreturn]] void misuse(const std::string& what);

struct FoundMethod {
    const Method* method = nullptr; ///< null when nobody implements it
    const Class* implementedBy = nullptr;
};

/// Looks through the class and what it inherits from.
[[nodiscard]] FoundMethod findMethod(const Class* type, const char* selector);

/// The class called `name`, or null.
[[nodiscard]] Class* classNamed(const std::string& name);

[[nodiscard]] bool isClassObject(const Object* object);

/// Makes room in all instances for the variables of classes that were compiled elsewhere. Once is enough.
void layOutInstances();

} // namespace orvantile::test::objc
