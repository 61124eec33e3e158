morvelle_room(files
  SOURCES
    files/file_choice.cpp files/line_sink.cpp files/prefilter_file.cpp files/rule_export.cpp
    files/rule_file_reader.cpp files/rule_import.cpp files/signature_file.cpp files/signature_texts.cpp
    files/signatures.cpp files/file_names.cpp
  USES core disk)
