/* Movie Toolbox. QuickTime movies have no Windows counterpart here: the calls
   report themselves and answer noErr, nil or 0 without writing their output
   parameters; the procedures return nothing. */
#ifndef KWE_MOVIES_H
#define KWE_MOVIES_H

#include "Events.h"
#include "Files.h"
#include "MacTypes.h"

typedef SInt16 ScriptCode;
typedef SInt32 TimeValue;
typedef SInt32 TimeScale;
typedef SInt32 ComponentResult;
typedef struct MovieRecord* Movie;
typedef struct TrackRecord* Track;
typedef struct MediaRecord* Media;
typedef struct ComponentInstanceRecord* ComponentInstance;
typedef ComponentInstance MovieController;
typedef struct TimeRecord TimeRecord;
typedef struct SampleDescription** SampleDescriptionHandle;

KWE_API OSErr KWE_CALL EnterMovies(void);
KWE_API void KWE_CALL ExitMovies(void);
KWE_API OSErr KWE_CALL GetMoviesError(void);
KWE_API void KWE_CALL ClearMoviesStickyError(void);
KWE_API OSErr KWE_CALL CreateMovieFile(const FSSpec* fileSpec, OSType creator, ScriptCode scriptTag,
                                       SInt32 createMovieFileFlags, SInt16* resRefNum,
                                       Movie* newmovie);
KWE_API OSErr KWE_CALL OpenMovieFile(const FSSpec* fileSpec, SInt16* resRefNum, SInt8 permission);
KWE_API OSErr KWE_CALL CloseMovieFile(SInt16 resRefNum);
KWE_API OSErr KWE_CALL NewMovieFromFile(Movie* theMovie, SInt16 resRefNum, SInt16* resId,
                                        StringPtr resName, SInt16 newMovieFlags,
                                        Boolean* dataRefWasChanged);
KWE_API OSErr KWE_CALL AddMovieResource(Movie theMovie, SInt16 resRefNum, SInt16* resId,
                                        ConstStr255Param resName);
KWE_API void KWE_CALL DisposeMovie(Movie theMovie);
KWE_API void KWE_CALL GetMovieBox(Movie theMovie, Rect* boxRect);
KWE_API void KWE_CALL SetMovieBox(Movie theMovie, const Rect* boxRect);
KWE_API PicHandle KWE_CALL GetMoviePict(Movie theMovie, TimeValue time);
KWE_API TimeValue KWE_CALL GetMovieTime(Movie theMovie, TimeRecord* currentTime);
KWE_API void KWE_CALL SetMovieTimeValue(Movie theMovie, TimeValue newtime);
KWE_API TimeScale KWE_CALL GetMovieTimeScale(Movie theMovie);
KWE_API Track KWE_CALL NewMovieTrack(Movie theMovie, Fixed width, Fixed height, SInt16 trackVolume);
KWE_API Media KWE_CALL NewTrackMedia(Track theTrack, OSType mediaType, TimeScale timeScale,
                                     Handle dataRef, OSType dataRefType);
KWE_API OSErr KWE_CALL BeginMediaEdits(Media theMedia);
KWE_API OSErr KWE_CALL EndMediaEdits(Media theMedia);
KWE_API OSErr KWE_CALL AddMediaSample(Media theMedia, Handle dataIn, SInt32 inOffset, UInt32 size,
                                      TimeValue durationPerSample,
                                      SampleDescriptionHandle sampleDescriptionH,
                                      SInt32 numberOfSamples, SInt16 sampleFlags,
                                      TimeValue* sampleTime);
KWE_API OSErr KWE_CALL InsertMediaIntoTrack(Track theTrack, TimeValue trackStart,
                                            TimeValue mediaTime, TimeValue mediaDuration,
                                            Fixed mediaRate);
KWE_API TimeValue KWE_CALL GetMediaDuration(Media theMedia);
KWE_API MovieController KWE_CALL NewMovieController(Movie theMovie, const Rect* movieRect,
                                                    SInt32 someFlags);
KWE_API ComponentResult KWE_CALL MCIsPlayerEvent(MovieController mc, const EventRecord* e);
KWE_API ComponentResult KWE_CALL MCDoAction(MovieController mc, SInt16 action, void* params);
KWE_API ComponentResult KWE_CALL MCSetControllerBoundsRect(MovieController mc, const Rect* bounds);

#endif
