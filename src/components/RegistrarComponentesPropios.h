#pragma once

namespace korven {

class ComponentRegistry;

// Registers the components this program builds itself: ClientBook.Listing and
// OperationCopier.Main.
void RegistrarComponentesPropios(ComponentRegistry& registro);

} // namespace korven
