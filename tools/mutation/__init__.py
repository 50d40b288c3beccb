"""Deliberate mistakes in the logic; tools/mutate.py runs them, docs/testing.md tells of them."""
