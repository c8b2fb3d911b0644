/* Edition Manager. Publish and subscribe has no Windows counterpart: every
   call reports itself and answers editionMgrInitErr, as the Edition Manager
   does before InitEditionPack, and writes no output parameter.
   InitEditionPack itself answers memFullErr, so an application that checks
   it leaves the manager alone. */
#ifndef KWE_EDITIONS_H
#define KWE_EDITIONS_H

#include "Events.h"
#include "Files.h"
#include "MacTypes.h"

enum { editionMgrInitErr = -450 };

typedef SInt16 ScriptCode;
typedef SInt8 SectionType;
typedef SInt16 UpdateMode;
typedef SInt32 EditionRefNum;
typedef ResType FormatType;

/* Records the calls take only by address. */
typedef struct SectionRecord** SectionHandle;
typedef struct EditionContainerSpec EditionContainerSpec;
typedef struct EditionInfoRecord EditionInfoRecord;
typedef struct NewSubscriberReply NewSubscriberReply;
typedef struct NewPublisherReply NewPublisherReply;
typedef struct SectionOptionsReply SectionOptionsReply;

typedef SInt16(KWE_CALL* ExpDlgHookProcPtr)(SInt16 itemOffset, SInt16 itemHit, DialogPtr theDialog,
                                            void* yourDataPtr);
typedef Boolean(KWE_CALL* ExpModalFilterProcPtr)(DialogPtr theDialog, EventRecord* theEvent,
                                                 SInt16 itemOffset, SInt16* itemHit,
                                                 void* yourDataPtr);

/* InitEditionPack: reports "InitEditionPack" and answers memFullErr. */
KWE_API OSErr KWE_CALL InitEditionPackVersion(SInt16 curEditionMgrVersion);
KWE_API OSErr KWE_CALL NewSection(const EditionContainerSpec* container,
                                  const FSSpec* sectionDocument, SectionType kind, SInt32 sectionID,
                                  UpdateMode initalMode, SectionHandle* sectionH);
KWE_API OSErr KWE_CALL RegisterSection(const FSSpec* sectionDocument, SectionHandle sectionH,
                                       Boolean* aliasWasUpdated);
KWE_API OSErr KWE_CALL UnRegisterSection(SectionHandle sectionH);
KWE_API OSErr KWE_CALL IsRegisteredSection(SectionHandle sectionH);
KWE_API OSErr KWE_CALL AssociateSection(SectionHandle sectionH, const FSSpec* newSectionDocument);
/* Reports "CreateEditionContatinerFile". */
KWE_API OSErr KWE_CALL CreateEditionContainerFile(const FSSpec* editionFile, OSType fdCreator,
                                                  ScriptCode editionFileNameScript);
/* Reports "DeleteEditionContainterFile". */
KWE_API OSErr KWE_CALL DeleteEditionContainerFile(const FSSpec* editionFile);
KWE_API OSErr KWE_CALL OpenEdition(SectionHandle subscriberSectionH, EditionRefNum* refNum);
KWE_API OSErr KWE_CALL OpenNewEdition(SectionHandle publisherSectionH, OSType fdCreator,
                                      const FSSpec* publisherSectionDocument,
                                      EditionRefNum* refNum);
KWE_API OSErr KWE_CALL CloseEdition(EditionRefNum whichEdition, Boolean successful);
KWE_API OSErr KWE_CALL EditionHasFormat(EditionRefNum whichEdition, FormatType whichFormat,
                                        Size* formatSize);
KWE_API OSErr KWE_CALL ReadEdition(EditionRefNum whichEdition, FormatType whichFormat,
                                   void* buffPtr, Size* buffLen);
KWE_API OSErr KWE_CALL WriteEdition(EditionRefNum whichEdition, FormatType whichFormat,
                                    const void* buffPtr, Size buffLen);
KWE_API OSErr KWE_CALL SetEditionFormatMark(EditionRefNum whichEdition, FormatType whichFormat,
                                            UInt32 setMarkTo);
KWE_API OSErr KWE_CALL GetEditionInfo(SectionHandle sectionH, EditionInfoRecord* editionInfo);
KWE_API OSErr KWE_CALL GoToPublisherSection(const EditionContainerSpec* container);
KWE_API OSErr KWE_CALL GetLastEditionContainerUsed(EditionContainerSpec* container);
KWE_API OSErr KWE_CALL NewSubscriberDialog(NewSubscriberReply* reply);
KWE_API OSErr KWE_CALL NewPublisherDialog(NewPublisherReply* reply);
KWE_API OSErr KWE_CALL NewPublisherExpDialog(NewPublisherReply* reply, Point where,
                                             SInt16 expansionDITLresID, ExpDlgHookProcPtr dlgHook,
                                             ExpModalFilterProcPtr filterProc, void* yourDataPtr);
KWE_API OSErr KWE_CALL SectionOptionsDialog(SectionOptionsReply* reply);
KWE_API OSErr KWE_CALL SectionOptionsExpDialog(SectionOptionsReply* reply, Point where,
                                               SInt16 expansionDITLresID, ExpDlgHookProcPtr dlgHook,
                                               ExpModalFilterProcPtr filterProc, void* yourDataPtr);

#endif
