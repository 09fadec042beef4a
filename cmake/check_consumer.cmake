# Installs the build tree into a fresh prefix, then builds and runs a consumer
# against it: once through find_package(orlm), once through pkg-config. The
# consumer calls only orlm.h members and is linked with --as-needed and a run
# path to the prefix alone, and it runs without LD_LIBRARY_PATH: the
# installed numerics library must find the core library beside itself.
file(REMOVE_RECURSE ${WORK})
unset(ENV{LD_LIBRARY_PATH})
# Installed in one place and moved to another before use: the prefix is
# relocatable.
set(prefix ${WORK}/prefix)
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${WORK}/staged COMMAND_ERROR_IS_FATAL ANY OUTPUT_QUIET)
file(RENAME ${WORK}/staged ${prefix})
foreach(f include/orlm.h include/orlcore.h lib/liborlmt7.so.5.2 lib/liborlmt7.so lib/liborlcore.so.5.2 lib/liborlcore.so
          lib/pkgconfig/orlm.pc lib/cmake/orlm/orlmConfig.cmake)
  if(NOT EXISTS ${prefix}/${f})
    message(FATAL_ERROR "install lacks ${f}")
  endif()
endforeach()
set(ENV{CC} "${CC} ${CC_ARG1}")
execute_process(COMMAND ${CMAKE_COMMAND} -S ${SRC} -B ${WORK}/build -DCMAKE_PREFIX_PATH=${prefix}
  COMMAND_ERROR_IS_FATAL ANY OUTPUT_QUIET)
execute_process(COMMAND ${CMAKE_COMMAND} --build ${WORK}/build COMMAND_ERROR_IS_FATAL ANY OUTPUT_QUIET)
execute_process(COMMAND ${EMULATOR} ${WORK}/build/consumer RESULT_VARIABLE rc)
if(NOT rc EQUAL 0)
  message(FATAL_ERROR "find_package consumer failed: ${rc}")
endif()
find_program(PKGCONFIG pkg-config)
if(PKGCONFIG)
  set(ENV{PKG_CONFIG_PATH} ${prefix}/lib/pkgconfig)
  execute_process(COMMAND ${PKGCONFIG} --cflags --libs orlm OUTPUT_VARIABLE flags OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  separate_arguments(flags)
  separate_arguments(cc UNIX_COMMAND "${CC} ${CC_ARG1}")
  execute_process(COMMAND ${cc} ${SRC}/main.c -Wl,--as-needed ${flags} -Wl,-rpath,${prefix}/lib -o ${WORK}/consumer_pc COMMAND_ERROR_IS_FATAL ANY)
  execute_process(COMMAND ${EMULATOR} ${WORK}/consumer_pc RESULT_VARIABLE rc)
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "pkg-config consumer failed: ${rc}")
  endif()
endif()
message(STATUS "consumer built and ran against ${prefix}")
