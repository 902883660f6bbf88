# What makes a mistake of ours in memory end the program instead of serving whoever made the file that it reads.
# Added to vorn_settings, for what users get; tools/hardening looks whether the programs have it. The sanitizers see
# more, and do not go together with all of it. Other systems than Linux have ways of their own.
if(NOT CMAKE_SYSTEM_NAME STREQUAL "Linux")
  return()
endif()
include(CheckCXXCompilerFlag)
include(CheckLinkerFlag)

# Code that may lie anywhere. Stands before what Qt asks for its own users (-fPIC), so that this holds there.
string(APPEND CMAKE_CXX_FLAGS " -fPIE")
string(APPEND CMAKE_EXE_LINKER_FLAGS " -pie")

# The C library's calls know the sizes of what they fill, where the compiler does: level 3 as far as it can.
# Without optimisation it cannot, as in tests.
set(optimised $<NOT:$<OR:$<CONFIG:Debug>,$<BOOL:$<TARGET_PROPERTY:VORN_PLAIN>>>>)
target_compile_options(vorn_settings INTERFACE $<${optimised}:-U_FORTIFY_SOURCE> $<${optimised}:-D_FORTIFY_SOURCE=3>)

# The last two are not for every processor.
foreach(flag IN ITEMS -fstack-protector-strong -fstack-clash-protection -fcf-protection)
  string(MAKE_C_IDENTIFIER "VORN_KNOWS${flag}" known)
  check_cxx_compiler_flag(${flag} ${known})
  if(${known})
    target_compile_options(vorn_settings INTERFACE ${flag})
  endif()
endforeach()

# The table of the libraries' functions is filled at the start and cannot be written to afterwards.
check_linker_flag(CXX LINKER:-z,relro,-z,now VORN_KNOWS_relro)
if(VORN_KNOWS_relro)
  target_link_options(vorn_settings INTERFACE LINKER:-z,relro,-z,now)
endif()
