# The programs of the browser edition: vorn_web, the program itself, and vorn_web_studies, the panels and what is done
# with files; each is run by a worker of the page, and has what it needs alone. vorn_replay is for node: by it reports
# and pages are held against those of the other editions.
vorn_room(apps
  SOURCES no_pictures.cpp replay.cpp script_buttons.cpp whole_program.cpp
  NOT_LINKED platform/qt platform/web)
target_link_libraries(vorn_apps PUBLIC vornprocs)
target_compile_definitions(vorn_apps PRIVATE VORN_VERSION="${PROJECT_VERSION}")

# As much memory as a browser gives; a stack as on other systems.
set(memory -sALLOW_MEMORY_GROWTH=1 -sMAXIMUM_MEMORY=4GB -sINITIAL_MEMORY=64MB -sTOTAL_STACK=8MB)

# vorn_worker(NAME LIST link...): a program that waits by Asyncify; LIST names what of it never does.
function(vorn_worker name list)
  add_executable(${name} ${name}.cpp)
  target_compile_options(${name} PRIVATE -Oz)
  target_link_libraries(${name} PRIVATE ${ARGN} vorn_platform_web)
  set(never_waits ${CMAKE_CURRENT_SOURCE_DIR}/${list})
  set_target_properties(${name} PROPERTIES LINK_DEPENDS ${never_waits})
  target_link_options(${name} PRIVATE ${memory}
    -sASYNCIFY=1 -sASYNCIFY_STACK_SIZE=262144
    -sASYNCIFY_REMOVE=@${never_waits}
    -sMODULARIZE=1 -sEXPORT_NAME=createVorn -sENVIRONMENT=worker -sFORCE_FILESYSTEM=1
    -sEXPORTED_RUNTIME_METHODS=FS,callMain -sINVOKE_RUN=0 -sEXIT_RUNTIME=0)
endfunction()

vorn_worker(vorn_web web_never_waits.json vorn_apps)
target_compile_definitions(vorn_web PRIVATE VORN_VERSION="${PROJECT_VERSION}")
vorn_worker(vorn_web_studies web_studies_never_wait.json)

add_executable(vorn_replay vorn_replay.cpp)
target_compile_options(vorn_replay PRIVATE -Oz)
target_link_libraries(vorn_replay PRIVATE vorn_apps)
target_link_options(vorn_replay PRIVATE ${memory} -sNODERAWFS=1 -sENVIRONMENT=node -sEXIT_RUNTIME=1)
