# What makes a fault that is found in the optimised programs hard to use: copies into a buffer of a
# known size are checked, so is the stack before a function returns, and the program lies at another
# address each time, what the loader has filled in being read-only from then on. The libraries and
# the programs get it through morvelle_flags; scripts/check-hardening looks whether they have it.
#
# The first needs the optimiser, and the sanitizers see more than all of it: only Release has them.
target_compile_options(morvelle_flags INTERFACE
  $<$<CONFIG:Release>:-U_FORTIFY_SOURCE>
  $<$<CONFIG:Release>:-D_FORTIFY_SOURCE=2>
  $<$<CONFIG:Release>:-fstack-protector-strong>)
if(WIN32)
  # Where Windows has no function for a damaged stack the compiler brings its own, if it is told so
  # once more when it links.
  target_link_options(morvelle_flags INTERFACE $<$<CONFIG:Release>:-fstack-protector-strong>)
  # The last where addresses have 64 bits.
  target_link_options(morvelle_flags INTERFACE $<$<CONFIG:Release>:-Wl,--dynamicbase,--nxcompat>)
  if(CMAKE_SIZEOF_VOID_P EQUAL 8)
    target_link_options(morvelle_flags INTERFACE $<$<CONFIG:Release>:-Wl,--high-entropy-va>)
  endif()
else()
  target_compile_options(morvelle_flags INTERFACE $<$<CONFIG:Release>:-fPIE>)
  target_link_options(morvelle_flags INTERFACE
    $<$<CONFIG:Release>:-pie> $<$<CONFIG:Release>:-Wl,-z,relro,-z,now>)
endif()
