# The programs of the browser edition: vorn_web, which the page's workers run, and vorn_replay for node, by which its
# reports and pages are held against those of the other editions.
vorn_room(apps
  SOURCES no_pictures.cpp replay.cpp script_buttons.cpp whole_program.cpp
  NOT_LINKED platform/qt platform/web)
target_link_libraries(vorn_apps PUBLIC vornprocs)
target_compile_definitions(vorn_apps PRIVATE VORN_VERSION="${PROJECT_VERSION}")

# As much memory as a browser gives; a stack as on other systems.
set(memory -sALLOW_MEMORY_GROWTH=1 -sMAXIMUM_MEMORY=4GB -sINITIAL_MEMORY=64MB -sTOTAL_STACK=8MB)

add_executable(vorn_web vorn_web.cpp)
target_compile_options(vorn_web PRIVATE -Oz)
target_link_libraries(vorn_web PRIVATE vorn_apps vorn_platform_web)
target_compile_definitions(vorn_web PRIVATE VORN_VERSION="${PROJECT_VERSION}")
set(never_waits ${CMAKE_CURRENT_SOURCE_DIR}/web_never_waits.json)
set_target_properties(vorn_web PROPERTIES LINK_DEPENDS ${never_waits})
target_link_options(vorn_web PRIVATE ${memory}
  -sASYNCIFY=1 -sASYNCIFY_STACK_SIZE=262144
  -sASYNCIFY_REMOVE=@${never_waits}
  -sMODULARIZE=1 -sEXPORT_NAME=createVorn -sENVIRONMENT=worker -sFORCE_FILESYSTEM=1
  -sEXPORTED_RUNTIME_METHODS=FS,callMain -sINVOKE_RUN=0 -sEXIT_RUNTIME=0)

add_executable(vorn_replay vorn_replay.cpp)
target_compile_options(vorn_replay PRIVATE -Oz)
target_link_libraries(vorn_replay PRIVATE vorn_apps)
target_link_options(vorn_replay PRIVATE ${memory} -sNODERAWFS=1 -sENVIRONMENT=node -sEXIT_RUNTIME=1)
