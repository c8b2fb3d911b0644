// Finding references in one file's map: by ID, by name, by index among the
// live references of a type.
#pragma once
#include "MacTypes.h"
#include "resources/resource_file.h"

namespace kwe::resources {

bool FindById(ResourceFile& file, ResType type, SInt16 id, ReferencePlace* place);
// The name compared exactly: length and bytes.
bool FindByName(ResourceFile& file, ResType type, ConstStr255Param name, ReferencePlace* place);
// index counts from 1 over the live references of the type.
bool FindByIndex(ResourceFile& file, ResType type, SInt16 index, ReferencePlace* place);
int CountLive(ResourceFile& file, ResType type);
// Whether a live reference of the type has this ID.
bool IdInUse(ResourceFile& file, ResType type, SInt16 id);

// The reference's handle, made when it has none; with ResLoad on its data
// is read when the handle is empty. Null when the data could not be had.
Handle HandleForReference(ResourceFile& file, ReferencePlace place);
Handle Get1ById(ResourceFile& file, ResType type, SInt16 id);

}  // namespace kwe::resources
