# Installs the freshly built ts4 into a scratch prefix, then configures,
# builds and runs tests/consumer against it with find_package(ts4).
set(prefix "${WORK_DIR}/prefix")
set(build "${WORK_DIR}/build")
file(REMOVE_RECURSE "${WORK_DIR}")

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "failed (${result}): ${ARGN}")
  endif()
endfunction()

run(${CMAKE_COMMAND} --install "${TS4_BINARY_DIR}" --prefix "${prefix}")
run(${CMAKE_COMMAND} -S "${SOURCE_DIR}" -B "${build}" -G Ninja
    "-DCMAKE_PREFIX_PATH=${prefix}" "-DCMAKE_CXX_COMPILER=${CXX_COMPILER}"
    "-DCMAKE_EXE_LINKER_FLAGS=${LINK_FLAGS}")
run(${CMAKE_COMMAND} --build "${build}")
run("${build}/consumer")
