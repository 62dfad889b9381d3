# Copies FROM to TO where there is no TO; under another name first, so that a half copy is never taken for
# the user's file.
if(NOT EXISTS "${TO}")
  file(COPY_FILE "${FROM}" "${TO}.new")
  file(RENAME "${TO}.new" "${TO}" NO_REPLACE RESULT taken)
  if(NOT taken STREQUAL "0")
    file(REMOVE "${TO}.new")
  endif()
endif()
