// Where CustomPutFile and CustomGetFile hand over to the Standard File
// Package: its put and get dialogs as SFPPutFile and SFPGetFile run them, with
// the arguments the Custom forms share with those, answering in the System 7
// reply record.
#pragma once
#include "StandardFile.h"

namespace kwe::standardfile {

void PutFile(Point where, ConstStr255Param prompt, ConstStr255Param defaultName, SInt16 dlgID,
             StandardFileReply* reply);
void GetFile(Point where, SInt16 numTypes, ConstSFTypeListPtr typeList, SInt16 dlgID,
             StandardFileReply* reply);

}  // namespace kwe::standardfile
