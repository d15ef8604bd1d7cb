# Run by CPack on the packages that it made, for what it cannot say of them: that packages of several
# architectures may be installed side by side, that dpkg's own trigger renews the linker's cache, no
# scripts, and that the date of every file is the package's.
foreach(package ${CPACK_PACKAGE_FILES})
  set(tree ${package}.tree)
  file(REMOVE_RECURSE ${tree})
  execute_process(COMMAND dpkg-deb --raw-extract ${package} ${tree} COMMAND_ERROR_IS_FATAL ANY)
  # The tools of either architecture do for the other.
  set(multi_arch foreign)
  if(package MATCHES "/lib[^/]*$")
    set(multi_arch same)
  endif()
  file(READ ${tree}/DEBIAN/control control)
  string(STRIP "${control}" control) # an empty line would end it
  file(WRITE ${tree}/DEBIAN/control "${control}\nMulti-Arch: ${multi_arch}\n")
  file(REMOVE ${tree}/DEBIAN/postinst ${tree}/DEBIAN/postrm)
  if(DEFINED ENV{SOURCE_DATE_EPOCH})
    execute_process(
      COMMAND find ${tree} -exec touch --no-dereference --date=@$ENV{SOURCE_DATE_EPOCH} {} +
      COMMAND_ERROR_IS_FATAL ANY)
  endif()
  # One thread, for compression parts the data among as many as there are.
  execute_process(
    COMMAND dpkg-deb --root-owner-group --threads-max=1 -Zxz --build ${tree} ${package}
    OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
  file(REMOVE_RECURSE ${tree})
endforeach()
