morvelle_room(app
  SOURCES app/deleted_items_reader.cpp app/settings.cpp app/start_up.cpp
  USES dbx files wab core)
