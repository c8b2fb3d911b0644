// Stand-in for the Standard File Package until it is built: the dialogs are
// not shown and every reply says the user cancelled. The package replaces
// this file when it takes the hooks over.
#include "frame/standard_file_hooks.h"

namespace kwe::standardfile {

void PutFile(Point, ConstStr255Param, ConstStr255Param, SInt16, StandardFileReply* reply) {
  if (reply) reply->sfGood = false;
}

void GetFile(Point, SInt16, ConstSFTypeListPtr, SInt16, StandardFileReply* reply) {
  if (reply) reply->sfGood = false;
}

}  // namespace kwe::standardfile
