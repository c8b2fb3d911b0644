// The Resource Manager's part in the session's start and end, and what the
// Toolbox utilities' resource shortcuts ask of it.
#include "Resources.h"
#include "frame/subsystems.h"
#include "memory/master_flags.h"
#include "memory/resource_shortcut_hook.h"
#include "resources/resource_file_io.h"

namespace kwe::resources {

void DetachOnEmpty(Handle h);
void ReleaseAllCodeResources();

void StartResourceLayer() {
  KWE_CodeResource(2, 0, 0, nullptr);
  memory::SetResourceDetachProcedure(DetachOnEmpty);
}

void CloseResourceChain() {
  while (!Chain().empty()) CloseResourceFile(*FileInSlot(Chain().front()));
}

void EndResourceLayer() {
  KWE_CodeResource(4, 0, 0, nullptr);
  ReleaseAllCodeResources();
}

Handle GetResourceForShortcut(ResType type, SInt16 id) { return GetResource(type, id); }
void ReleaseResourceForShortcut(Handle h) { ReleaseResource(h); }

}  // namespace kwe::resources
