"""Builds orvelasn1; see pyproject.toml and build_extension.py."""

from setuptools import setup

setup(
    packages=["orvelasn1"],
    package_data={"orvelasn1": ["py.typed", "*.pyi"]},
    options={"bdist_wheel": {"py_limited_api": "cp39"}},
    cffi_modules=["build_extension.py:ffibuilder"],
)
