# vorn_faulty(TARGET): puts the calls of support/os_faults.h in the place of the operating system's. Not every
# system's linker can.
include_guard()
function(vorn_faulty target)
  target_sources(${target} PRIVATE ${PROJECT_SOURCE_DIR}/tests/support/os_faults.cpp)
  foreach(call IN ITEMS open read write fsync close rename fchmod fchown unlink stat lstat fstat access flock)
    target_link_options(${target} PRIVATE "LINKER:--wrap=${call}")
  endforeach()
endfunction()
