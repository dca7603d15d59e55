# Beside the rooms: help, logs, outside programs.
tarn_library(tarn_help shell/help
  SOURCES shell/help/HelpPages.cpp shell/help/HelpText.cpp shell/help/frmHelp.cpp
  LINK tarn_places tarn_platform)

# Versions of everything linked, and the note of a crash.
tarn_library(tarn_about shell/about
  SOURCES shell/about/AboutText.cpp shell/about/CrashStrip.cpp shell/about/frmText.cpp
  LINK tarn_platform tarn_mci)

tarn_library(tarn_logs shell/logs
  SOURCES shell/logs/frmLogs.cpp
  LINK tarn_log_file tarn_places tarn_context)

tarn_library(tarn_outside shell/outside
  SOURCES shell/outside/OutsidePrograms.cpp
  LINK tarn_context)

# Above the rooms: window, start, and the house that joins them.
tarn_library(tarn_window shell/window MOC
  SOURCES shell/window/FlowRow.cpp shell/window/MainLayout.cpp shell/window/MenuSwitches.cpp shell/window/ShellRoom.cpp
          shell/window/frmMain.cpp
  LINK tarn_context tarn_help)

tarn_library(tarn_start shell/start
  SOURCES shell/start/Lifecycle.cpp shell/start/StartPath.cpp shell/start/frmSplash.cpp
  LINK tarn_window tarn_settings tarn_navigation tarn_notes tarn_outside)

tarn_library(tarn_house shell
  SOURCES shell/House.cpp shell/SecondStart.cpp
  LINK tarn_start tarn_navigation tarn_notes tarn_display tarn_slides tarn_pictureinfo_panel tarn_fileops tarn_print tarn_thumbnails tarn_video tarn_web tarn_logs tarn_about
  PRIVATE Qt6::Network)

add_executable(tarn-view main.cpp)
target_link_libraries(tarn-view PRIVATE tarn_house)
