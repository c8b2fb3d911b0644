// Movie Toolbox: QuickTime movies are not played here. Each call reports its
// own name (__func__ is the exported name) and answers noErr, nil or 0.
#include "Movies.h"
#include "frame/unsupported.h"

KWE_API OSErr KWE_CALL EnterMovies(void) { return kwe::Unsupported(__func__, noErr); }
KWE_API void KWE_CALL ExitMovies(void) { kwe::Unsupported(__func__); }
KWE_API OSErr KWE_CALL GetMoviesError(void) { return kwe::Unsupported(__func__, noErr); }
KWE_API void KWE_CALL ClearMoviesStickyError(void) { kwe::Unsupported(__func__); }

KWE_API OSErr KWE_CALL CreateMovieFile(const FSSpec*, OSType, ScriptCode, SInt32, SInt16*, Movie*) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL OpenMovieFile(const FSSpec*, SInt16*, SInt8) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL CloseMovieFile(SInt16) { return kwe::Unsupported(__func__, noErr); }

KWE_API OSErr KWE_CALL NewMovieFromFile(Movie*, SInt16, SInt16*, StringPtr, SInt16, Boolean*) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL AddMovieResource(Movie, SInt16, SInt16*, ConstStr255Param) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API void KWE_CALL DisposeMovie(Movie) { kwe::Unsupported(__func__); }
KWE_API void KWE_CALL GetMovieBox(Movie, Rect*) { kwe::Unsupported(__func__); }
KWE_API void KWE_CALL SetMovieBox(Movie, const Rect*) { kwe::Unsupported(__func__); }

KWE_API PicHandle KWE_CALL GetMoviePict(Movie, TimeValue) {
  return kwe::Unsupported(__func__, PicHandle{});
}

KWE_API TimeValue KWE_CALL GetMovieTime(Movie, TimeRecord*) {
  return kwe::Unsupported(__func__, TimeValue{0});
}

KWE_API void KWE_CALL SetMovieTimeValue(Movie, TimeValue) { kwe::Unsupported(__func__); }

KWE_API TimeScale KWE_CALL GetMovieTimeScale(Movie) {
  return kwe::Unsupported(__func__, TimeScale{0});
}

KWE_API Track KWE_CALL NewMovieTrack(Movie, Fixed, Fixed, SInt16) {
  return kwe::Unsupported(__func__, Track{});
}

KWE_API Media KWE_CALL NewTrackMedia(Track, OSType, TimeScale, Handle, OSType) {
  return kwe::Unsupported(__func__, Media{});
}

KWE_API OSErr KWE_CALL BeginMediaEdits(Media) { return kwe::Unsupported(__func__, noErr); }
KWE_API OSErr KWE_CALL EndMediaEdits(Media) { return kwe::Unsupported(__func__, noErr); }

KWE_API OSErr KWE_CALL AddMediaSample(Media, Handle, SInt32, UInt32, TimeValue,
                                      SampleDescriptionHandle, SInt32, SInt16, TimeValue*) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL InsertMediaIntoTrack(Track, TimeValue, TimeValue, TimeValue, Fixed) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API TimeValue KWE_CALL GetMediaDuration(Media) {
  return kwe::Unsupported(__func__, TimeValue{0});
}

KWE_API MovieController KWE_CALL NewMovieController(Movie, const Rect*, SInt32) {
  return kwe::Unsupported(__func__, MovieController{});
}

KWE_API ComponentResult KWE_CALL MCIsPlayerEvent(MovieController, const EventRecord*) {
  return kwe::Unsupported(__func__, ComponentResult{0});
}

KWE_API ComponentResult KWE_CALL MCDoAction(MovieController, SInt16, void*) {
  return kwe::Unsupported(__func__, ComponentResult{0});
}

KWE_API ComponentResult KWE_CALL MCSetControllerBoundsRect(MovieController, const Rect*) {
  return kwe::Unsupported(__func__, ComponentResult{0});
}
