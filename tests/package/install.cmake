cmake_minimum_required(VERSION 3.25)

# Installs the COMPONENTS of BUILD into PREFIX, from nothing, so that what an older run left there cannot help.
file(REMOVE_RECURSE ${PREFIX})
foreach(component IN LISTS COMPONENTS)
  execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix ${PREFIX} --component ${component}
                  COMMAND_ERROR_IS_FATAL ANY)
endforeach()
