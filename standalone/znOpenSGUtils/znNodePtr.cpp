#include "host/znOpenSGUtils/znNodePtr.h"

znNodePtr::znNodePtr() = default;
znNodePtr::znNodePtr(const osg::NodePtr& node) : m_node(node) {}
znNodePtr::znNodePtr(const znNodePtr&) = default;
znNodePtr& znNodePtr::operator=(const znNodePtr&) = default;
znNodePtr::~znNodePtr() = default;
