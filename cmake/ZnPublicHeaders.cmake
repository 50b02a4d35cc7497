# The headers that an installation has; every other header is private. Relative to the root of the sources.
file(GLOB_RECURSE ZN_HOST_HEADERS RELATIVE ${PROJECT_SOURCE_DIR} CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/host/*.h)
list(APPEND ZN_HOST_HEADERS import/filetypes/znCADFileTypes.h)

set(ZN_LIBRARY_HEADERS
  import/ImportExport.h
  import/znFileLoaderJob.h
  converter/znPtxConverterJob.h
  loader/UnloadedParts.h
  loader/znPtxLoaderJob.h
  optimization/znPtxTreeOptimizationJob.h
  plmxml/znPLMXMLLoader.h
  plmxml/znPLMXMLLoaderJob.h)

set(ZN_STANDALONE_HEADERS
  scene/Buffer.h
  scene/ContainerRegistry.h
  scene/Mesh.h
  scene/ViewTags.h
  files/glb/GlbWriter.h
  files/glb/gathering/GatherOptions.h
  files/glb/levels/LevelOptions.h
  files/glb/packing/PackOptions.h
  files/Error.h
  files/Expected.h
  files/Note.h
  files/OutputFile.h
  render/Background.h
  render/Snapshot.h
  render/SnapshotLook.h
  render/SnapshotView.h
  files/scenefile/ReadSceneFile.h
  files/scenefile/SceneFile.h
  files/scenefile/WriteSceneFile.h
  standalone/loading/SceneExtras.h
  standalone/session/Session.h
  standalone/session/Setting.h
  standalone/session/SettingGroups.h
  standalone/session/Settings.h
  standalone/znVariants/VariantSets.h
  standalone/startup/StandaloneSession.h
  standalone/znUtils/CallTrace.h
  standalone/znUtils/LogSink.h)

set(ZN_IMPORTER_HEADERS
  geometry/WrongNormals.h
  importer/ImportRequest.h
  importer/ImportResult.h
  importer/Importer.h
  importer/MissingParts.h
  importer/PartCounts.h
  importer/SceneText.h
  importer/plmxml/DanglingReference.h
  importer/plmxml/DocumentStructure.h)
