/* Calling convention and linkage of every KWEJMP.dll entry point. */
#ifndef KWE_CONFIG_H
#define KWE_CONFIG_H

#ifdef __cplusplus
#define KWE_EXTERN_C extern "C"
#else
#define KWE_EXTERN_C extern
#endif

#ifdef _WIN32
/* Callee-pops, as every Toolbox entry point of the library; a no-op on x86_64. */
#define KWE_CALL __stdcall
#ifdef KWE_BUILDING_LIBRARY
#define KWE_API KWE_EXTERN_C __declspec(dllexport)
#else
#define KWE_API KWE_EXTERN_C __declspec(dllimport)
#endif
#else
/* Native (non-Windows) builds compile only the byte-transforming pieces. */
#define KWE_CALL
#define KWE_API KWE_EXTERN_C
#endif

#endif
