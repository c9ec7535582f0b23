#pragma once

#include "CVelmRTree.h"
#include "oracle/PlainRTree.h"

#include <QVector>

#include <memory>
#include <utility>
#include <vector>

#include <boost/geometry.hpp>
#include <boost/geometry/index/rtree.hpp>
#include <spatialindex/SpatialIndex.h>

/// The trees of the benchmarks with one interface: insert, count the entries that overlap, erase by
/// rectangle and number. Each collects the identifiers that it finds, as a caller does.
namespace peers {

inline void* idOf(size_t number)
{
    return reinterpret_cast<void*>(number + 1);
}

/// The library, and the plain form of the same tree.
template<class Tree>
class Ours
{
public:
    void insert(CVelmRTreeMBR rect, size_t number) { m_tree.InsertRect(&rect, idOf(number), 0); }
    void erase(CVelmRTreeMBR rect, size_t number) { m_tree.DeleteRect(&rect, idOf(number)); }
    int query(CVelmRTreeMBR rect)
    {
        m_found.clear();
        return m_tree.GetOverlap(&rect, m_found);
    }

private:
    Tree m_tree;
    QVector<void*> m_found;
};

using Velm = Ours<CVelmRTree>;
using Plain = Ours<PlainRTree>;

template<class Parameters>
class Boost
{
public:
    void insert(const CVelmRTreeMBR& rect, size_t number)
    {
        m_tree.insert(std::make_pair(boxOf(rect), idOf(number)));
    }
    void erase(const CVelmRTreeMBR& rect, size_t number)
    {
        m_tree.remove(std::make_pair(boxOf(rect), idOf(number)));
    }
    int query(const CVelmRTreeMBR& rect)
    {
        m_found.clear();
        m_tree.query(boost::geometry::index::intersects(boxOf(rect)), std::back_inserter(m_found));
        return static_cast<int>(m_found.size());
    }

private:
    using Point = boost::geometry::model::point<double, 2, boost::geometry::cs::cartesian>;
    using Box = boost::geometry::model::box<Point>;
    using Entry = std::pair<Box, void*>;

    static Box boxOf(const CVelmRTreeMBR& rect)
    {
        return Box(Point(rect.xmin, rect.ymin), Point(rect.xmax, rect.ymax));
    }

    boost::geometry::index::rtree<Entry, Parameters> m_tree;
    std::vector<Entry> m_found;
};

using BoostQuadratic = Boost<boost::geometry::index::quadratic<9, 4>>;
using BoostRstar = Boost<boost::geometry::index::rstar<16>>;

class LibSpatialIndex
{
public:
    LibSpatialIndex()
        : m_storage(SpatialIndex::StorageManager::createNewMemoryStorageManager()),
          m_tree(SpatialIndex::RTree::createNewRTree(*m_storage, 0.7, 16, 16, 2,
                                                     SpatialIndex::RTree::RV_RSTAR, m_indexId))
    {}

    void insert(const CVelmRTreeMBR& rect, size_t number)
    {
        m_tree->insertData(0, nullptr, regionOf(rect), static_cast<SpatialIndex::id_type>(number));
    }
    void erase(const CVelmRTreeMBR& rect, size_t number)
    {
        m_tree->deleteData(regionOf(rect), static_cast<SpatialIndex::id_type>(number));
    }
    int query(const CVelmRTreeMBR& rect)
    {
        Collector collector(m_found);
        m_found.clear();
        m_tree->intersectsWithQuery(regionOf(rect), collector);
        return static_cast<int>(m_found.size());
    }

private:
    class Collector : public SpatialIndex::IVisitor
    {
    public:
        explicit Collector(std::vector<SpatialIndex::id_type>& found) : m_found(found) {}
        void visitNode(const SpatialIndex::INode&) override {}
        void visitData(const SpatialIndex::IData& data) override
        {
            m_found.push_back(data.getIdentifier());
        }
        void visitData(std::vector<const SpatialIndex::IData*>&) override {}

    private:
        std::vector<SpatialIndex::id_type>& m_found;
    };

    static SpatialIndex::Region regionOf(const CVelmRTreeMBR& rect)
    {
        return SpatialIndex::Region(&rect.xmin, &rect.xmax, 2);
    }

    std::unique_ptr<SpatialIndex::IStorageManager> m_storage;
    SpatialIndex::id_type m_indexId = 0;
    std::unique_ptr<SpatialIndex::ISpatialIndex> m_tree;
    std::vector<SpatialIndex::id_type> m_found;
};

}  // namespace peers
