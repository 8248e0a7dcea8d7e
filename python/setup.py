"""Builds orvelasn1; see pyproject.toml and build_extension.py."""

from setuptools import setup

setup(cffi_modules=["build_extension.py:ffibuilder"])
