morvelle_room(dbx SOURCES dbx/folder_store.cpp dbx/hex.cpp USES core)
