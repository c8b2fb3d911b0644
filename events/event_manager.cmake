# The event queue, the message pump behind every event call, VBL tasks and
# the mouse capture depth.
if(WIN32)
  target_sources(KWEJMP PRIVATE
    ${CMAKE_CURRENT_LIST_DIR}/event_calls.cpp
    ${CMAKE_CURRENT_LIST_DIR}/event_queue.cpp
    ${CMAKE_CURRENT_LIST_DIR}/layout_checks.cpp
    ${CMAKE_CURRENT_LIST_DIR}/message_pump.cpp
    ${CMAKE_CURRENT_LIST_DIR}/vbl_tasks.cpp)
endif()
