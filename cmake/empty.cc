// Intentionally empty: a library whose folder has no sources yet.
