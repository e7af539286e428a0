# Arrays, selections, references, element trees, sections, features, regeneration, the kernel's client, export.
set(trees_sources
  array.cpp element_calls.cpp element_catalog.cpp element_handles.cpp element_tree.cpp element_tree_calls.cpp
  item_lookup.cpp reference.cpp section.cpp section_check.cpp section_records.cpp selection.cpp
  feature_calls.cpp feature_removal.cpp feature_removal_calls.cpp features.cpp
  features/extrude.cpp features/feature_kind.cpp features/revolve.cpp features/section_recipe.cpp
  features/sketch_plane.cpp features/sketched_curve.cpp
  kernel_client.cpp kernel_process.cpp regeneration.cpp topology_json.cpp
  base64.cpp export_calls.cpp whole_file.cpp)
