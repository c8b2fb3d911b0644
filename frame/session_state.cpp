#include "frame/session.h"

namespace kwe {

Session g_session;

const char* MainWindowClassName() { return TheSession().record.mainWindowClass; }
const char* WindowClassName() { return TheSession().record.windowClass; }
const char* MdiWindowClassName() { return TheSession().record.mdiWindowClass; }
const char* SystemResourceFileName() { return TheSession().record.systemResourceFile; }
const char* DibDriverName() { return TheSession().record.dibDriverName; }

}  // namespace kwe
