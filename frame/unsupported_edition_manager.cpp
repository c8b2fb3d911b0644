// Edition Manager: no publish and subscribe on Windows. Each call reports its
// own name (__func__ is the exported name) unless noted and answers
// editionMgrInitErr, as the manager does before it is initialised.
#include "Editions.h"
#include "frame/unsupported.h"

// Answers memFullErr, the Edition Manager's answer when it cannot load, so
// that an application that checks it runs on without publish and subscribe.
KWE_API OSErr KWE_CALL InitEditionPackVersion(SInt16) {
  return kwe::Unsupported("InitEditionPack", memFullErr);
}

KWE_API OSErr KWE_CALL NewSection(const EditionContainerSpec*, const FSSpec*, SectionType, SInt32,
                                  UpdateMode, SectionHandle*) {
  return kwe::Unsupported(__func__, editionMgrInitErr);
}

KWE_API OSErr KWE_CALL RegisterSection(const FSSpec*, SectionHandle, Boolean*) {
  return kwe::Unsupported(__func__, editionMgrInitErr);
}

KWE_API OSErr KWE_CALL UnRegisterSection(SectionHandle) {
  return kwe::Unsupported(__func__, editionMgrInitErr);
}

KWE_API OSErr KWE_CALL IsRegisteredSection(SectionHandle) {
  return kwe::Unsupported(__func__, editionMgrInitErr);
}

KWE_API OSErr KWE_CALL AssociateSection(SectionHandle, const FSSpec*) {
  return kwe::Unsupported(__func__, editionMgrInitErr);
}

// The two container-file reports keep their misspellings: porting notes and
// logs search for these texts.
KWE_API OSErr KWE_CALL CreateEditionContainerFile(const FSSpec*, OSType, ScriptCode) {
  return kwe::Unsupported("CreateEditionContatinerFile", editionMgrInitErr);
}

KWE_API OSErr KWE_CALL DeleteEditionContainerFile(const FSSpec*) {
  return kwe::Unsupported("DeleteEditionContainterFile", editionMgrInitErr);
}

KWE_API OSErr KWE_CALL OpenEdition(SectionHandle, EditionRefNum*) {
  return kwe::Unsupported(__func__, editionMgrInitErr);
}

KWE_API OSErr KWE_CALL OpenNewEdition(SectionHandle, OSType, const FSSpec*, EditionRefNum*) {
  return kwe::Unsupported(__func__, editionMgrInitErr);
}

KWE_API OSErr KWE_CALL CloseEdition(EditionRefNum, Boolean) {
  return kwe::Unsupported(__func__, editionMgrInitErr);
}

KWE_API OSErr KWE_CALL EditionHasFormat(EditionRefNum, FormatType, Size*) {
  return kwe::Unsupported(__func__, editionMgrInitErr);
}

KWE_API OSErr KWE_CALL ReadEdition(EditionRefNum, FormatType, void*, Size*) {
  return kwe::Unsupported(__func__, editionMgrInitErr);
}

KWE_API OSErr KWE_CALL WriteEdition(EditionRefNum, FormatType, const void*, Size) {
  return kwe::Unsupported(__func__, editionMgrInitErr);
}

KWE_API OSErr KWE_CALL SetEditionFormatMark(EditionRefNum, FormatType, UInt32) {
  return kwe::Unsupported(__func__, editionMgrInitErr);
}

KWE_API OSErr KWE_CALL GetEditionInfo(SectionHandle, EditionInfoRecord*) {
  return kwe::Unsupported(__func__, editionMgrInitErr);
}

KWE_API OSErr KWE_CALL GoToPublisherSection(const EditionContainerSpec*) {
  return kwe::Unsupported(__func__, editionMgrInitErr);
}

KWE_API OSErr KWE_CALL GetLastEditionContainerUsed(EditionContainerSpec*) {
  return kwe::Unsupported(__func__, editionMgrInitErr);
}

KWE_API OSErr KWE_CALL NewSubscriberDialog(NewSubscriberReply*) {
  return kwe::Unsupported(__func__, editionMgrInitErr);
}

KWE_API OSErr KWE_CALL NewPublisherDialog(NewPublisherReply*) {
  return kwe::Unsupported(__func__, editionMgrInitErr);
}

KWE_API OSErr KWE_CALL NewPublisherExpDialog(NewPublisherReply*, Point, SInt16, ExpDlgHookProcPtr,
                                             ExpModalFilterProcPtr, void*) {
  return kwe::Unsupported(__func__, editionMgrInitErr);
}

KWE_API OSErr KWE_CALL SectionOptionsDialog(SectionOptionsReply*) {
  return kwe::Unsupported(__func__, editionMgrInitErr);
}

KWE_API OSErr KWE_CALL SectionOptionsExpDialog(SectionOptionsReply*, Point, SInt16,
                                               ExpDlgHookProcPtr, ExpModalFilterProcPtr, void*) {
  return kwe::Unsupported(__func__, editionMgrInitErr);
}
