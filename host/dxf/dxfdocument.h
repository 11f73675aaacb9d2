// A drawing read from a DXF file, and the host's working database over it: every tag kept in order
// and written back byte for byte where nothing changed. Hosts open, save and select through this
// class; the module sees only AcDbDatabase.
#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "host/api/acdbdatabase.h"
#include "host/dxf/dxfdialect.h"
#include "host/dxf/dxffile.h"
#include "host/dxf/dxfheader.h"
#include "host/dxf/dxfrecords.h"
#include "host/dxf/dxfresult.h"
#include "host/dxf/dxfstructure.h"
#include "host/dxf/dxfsymboltable.h"
#include "host/dxf/dxftagfile.h"
#include "host/dxf/dxftextcodec.h"

// Paper is the active paper-space layout, the one editors select in; PaperLayouts every one of them
// (the others are kept as the blocks *Paper_Space0, *Paper_Space1, ...).
enum class DxfSpace { Model, Paper, PaperLayouts };

// What a drawing is made of, as the file says it.
struct DxfFacts {
    std::string version;     // $ACADVER as written; empty when absent
    std::string codePage;    // $DWGCODEPAGE as written; empty when absent
    std::string encoding;    // the character set strings are read in, e.g. "UTF-8", "CP1252"
    std::string handleSeed;  // $HANDSEED as written; empty when absent
    // Entities a space holds directly; attributes, vertices and sequence ends belong to theirs.
    std::size_t modelEntities = 0;
    std::size_t paperEntities = 0;  // every paper-space layout
};

// What an insert of a block asks the user for: one per attribute definition that is not constant.
struct DxfAttributePrompt {
    std::wstring tag;
    std::wstring prompt;
    std::wstring defaultValue;
};

// A block reference as the editors select it, by window or by layer. The names stay valid while
// the document lives.
struct DxfReference {
    AcDbObjectId id;
    std::wstring_view blockName;
    std::wstring_view layer;
    AcGePoint3d position;
    std::int64_t instances = 1;  // columns x rows of an array (MINSERT); 1 for a plain reference
};

// How many references of a space name one block, by the name's bytes as the file holds them.
struct DxfNameCount {
    std::string_view nameBytes;
    std::int64_t references = 0;
    std::int64_t instances = 0;  // the references with each array's columns x rows
    std::int64_t arrays = 0;     // references that are arrays
};

// A block record made from a dynamic block (an anonymous "*U" variant) and the dynamic block's own
// record; `dynamic` is null when the link names a handle that no block record has.
struct DxfDynamicBlockLink {
    AcDbObjectId anonymous;
    AcDbObjectId dynamic;
};

// Whether a drawing whose sections, tables or blocks do not nest as they must is refused, or read
// with its structure mended.
enum class DxfReading { Strict, Recover };

class DxfRecordBuilder;
struct DxfAttributeDefinitionView;

class DxfDocument final : public AcDbDatabase {
public:
    static DxfResult<std::unique_ptr<DxfDocument>> readFile(
        const std::filesystem::path& path, const DxfProgress& progress = {},
        DxfFileAccess access = DxfFileAccess::Copy, DxfReading reading = DxfReading::Strict);
    // `name` stands for the file in messages and in DWGNAME.
    static DxfResult<std::unique_ptr<DxfDocument>> readBytes(
        std::string name, std::string_view bytes, DxfReading reading = DxfReading::Strict);
    ~DxfDocument() override;
    DxfDocument(const DxfDocument&) = delete;
    DxfDocument& operator=(const DxfDocument&) = delete;

    const std::filesystem::path& path() const { return m_path; }
    // What a recovering read mended, one line a change ("plan.dxf:1719: ..."); empty when the
    // drawing was read as it stands. A save writes the mended structure.
    const std::vector<std::string>& repairs() const { return m_repairs; }
    [[nodiscard]] DxfStatus save();
    [[nodiscard]] DxfStatus saveAs(const std::filesystem::path& path);
    std::string toBytes() const;

    // $ACADVER as the file has it; empty when it has none (R12 then).
    std::string_view version() const { return m_version; }
    bool isBinary() const { return m_tags.format() == DxfFormat::Binary; }

    DxfFacts facts() const;
    // Grows with every change to what save() would write; a host compares it to tell unsaved work.
    std::uint64_t editCount() const { return m_records.editCount(); }

    // The references of a space in file order.
    std::vector<DxfReference> blockReferences(DxfSpace space) const;
    // Calls `visit(id, nameBytes)` for each reference of a space in file order; builds no list
    // and reads no coordinate.
    void forEachReference(DxfSpace space,
                          const std::function<void(AcDbObjectId, std::string_view)>& visit) const;
    // The references of a space counted by their names' bytes, first met first: what a count of
    // the whole space needs, each name to be decoded once.
    std::vector<DxfNameCount> referenceCountsByName(DxfSpace space) const;
    // The paper-space layouts one by one: the active one first (its entities lie in the ENTITIES
    // section), then the others in block order, named as their LAYOUT objects name them, or by
    // their blocks' names where none does.
    std::vector<std::wstring> layoutNames() const;
    // As forEachReference and referenceCountsByName, for one layout of layoutNames().
    void forEachLayoutReference(
        std::size_t layout, const std::function<void(AcDbObjectId, std::string_view)>& visit) const;
    std::vector<DxfNameCount> layoutReferenceCountsByName(std::size_t layout) const;
    // Columns x rows of a reference that is an array (MINSERT); 1 for any other.
    std::int64_t referenceInstances(AcDbObjectId reference) const;
    // One reference's block name, layer and insertion point, for selecting it.
    std::wstring_view referenceName(AcDbObjectId reference) const;
    std::wstring_view referenceLayer(AcDbObjectId reference) const;
    AcGePoint3d referencePosition(AcDbObjectId reference) const;

    // Links of block records to the dynamic block they were made from (their AcDbBlockRepBTag
    // extended data), in block table order; records without one are not listed.
    std::vector<DxfDynamicBlockLink> dynamicBlockLinks() const;
    // The references inside a block's definition, in file order; none for a record without one.
    std::vector<DxfReference> referencesInBlock(AcDbObjectId record) const;

    // ATTREQ, SNAPMODE, OSMODE (RTSHORT), DWGNAME and DWGPREFIX (RTSTR, read only: the file's name
    // and its folder with a final "/"): RTNORM, or RTERROR for other names, other types and the
    // read-only ones. From R2000 on the header no longer holds the first
    // three; there they live in the session, as in the CAD program.
    int getVar(const std::wstring& name, resbuf& value) const;

    int setVar(const std::wstring& name, const resbuf& value);

    // Read access for views of the drawing. Ids are those every other call hands out; lists are
    // in writing order, edits included, and an ATTRIB, VERTEX or SEQEND follows its owner.
    std::vector<AcDbObjectId> entityIds(DxfSpace space) const;
    // The ENTITIES section as it is written: model space and the active layout together (code
    // 67 tells them apart). Cheaper than entityIds() for a reader that looks at every tag anyway.
    std::vector<AcDbObjectId> sectionEntityIds() const;
    // The records that belong to an entity: a reference's ATTRIBs or a polyline's VERTEXes and
    // the SEQEND after them.
    std::vector<AcDbObjectId> entityParts(AcDbObjectId entity) const;
    // The entities of a block's definition, between its BLOCK and ENDBLK.
    std::vector<AcDbObjectId> blockEntityIds(AcDbObjectId blockRecord) const;
    // The BLOCK record that opens the definition (name, flags, base point); null when it has none.
    AcDbObjectId blockBeginId(AcDbObjectId blockRecord) const;
    // The entries of a symbol table such as LAYER, in table order.
    std::vector<AcDbObjectId> tableEntryIds(std::string_view kind) const;
    const DxfTagFile& tagFile() const { return m_tags; }
    // The object's tags; none for an id the drawing does not hold.
    DxfTagRange tagsOf(AcDbObjectId id) const;
    std::wstring decodeText(std::string_view bytes) const { return m_codec.decode(bytes); }

    // AcDbDatabase
    std::vector<AcDbObjectId> blockTableRecordIds() const override;
    Acad::ErrorStatus getBlockTableRecordId(const std::wstring& name,
                                            AcDbObjectId& id) const override;
    Acad::ErrorStatus addBlockTableRecord(const std::wstring& name, AcDbObjectId& id) override;
    Acad::ErrorStatus getBlockTableRecordName(AcDbObjectId record,
                                              std::wstring& name) const override;
    Acad::ErrorStatus setBlockTableRecordOrigin(AcDbObjectId record,
                                                const AcGePoint3d& origin) override;
    Acad::ErrorStatus appendLine(AcDbObjectId record, const AcDbLine& line,
                                 AcDbObjectId& id) override;
    Acad::ErrorStatus appendAttributeDefinition(AcDbObjectId record,
                                                const AcDbAttributeDefinition& definition,
                                                AcDbObjectId& id) override;
    Acad::ErrorStatus getTextStyleId(const std::wstring& name, AcDbObjectId& id) const override;
    Acad::ErrorStatus addTextStyle(const AcDbTextStyleTableRecord& style,
                                   AcDbObjectId& id) override;
    Acad::ErrorStatus openBlockReference(AcDbObjectId entity,
                                         AcDbBlockReference& reference) const override;
    Acad::ErrorStatus insertBlockReference(const AcDbBlockReference& reference,
                                           AcDbObjectId& id) override;
    Acad::ErrorStatus getBlockEntityIds(AcDbObjectId record,
                                        std::vector<AcDbObjectId>& ids) const override;
    Acad::ErrorStatus getModelSpaceEntityIds(std::vector<AcDbObjectId>& ids) const override;
    Acad::ErrorStatus appendText(AcDbObjectId record, const AcDbText& text,
                                 AcDbObjectId& id) override;
    Acad::ErrorStatus openText(AcDbObjectId entity, AcDbText& text) const override;
    Acad::ErrorStatus openAttributeDefinition(AcDbObjectId entity,
                                              AcDbAttributeDefinition& definition) const override;
    Acad::ErrorStatus eraseEntity(AcDbObjectId entity) override;
    Acad::ErrorStatus getBlockReferenceIds(AcDbObjectId record,
                                           std::vector<AcDbObjectId>& ids) const override;
    Acad::ErrorStatus syncBlockReferenceAttributes(AcDbObjectId reference) override;
    Acad::ErrorStatus getHandle(AcDbObjectId object, std::wstring& handle) const override;
    Acad::ErrorStatus getObjectId(const std::wstring& handle, AcDbObjectId& id) const override;
    Acad::ErrorStatus registerApplication(const std::wstring& name) override;
    Acad::ErrorStatus getXData(AcDbObjectId object, const std::wstring& application,
                               std::vector<resbuf>& data) const override;
    Acad::ErrorStatus setXData(AcDbObjectId object, const std::wstring& application,
                               const std::vector<resbuf>& data) override;
    Acad::ErrorStatus countBlockReferences(const AcDbReferenceSelection& selection,
                                           std::vector<AcDbBlockCount>& counts) const override;

    // What the drawing's edits are at one moment, to go back to: a host takes it before a command
    // and puts it back to undo the command whole. Taking it copies the record lists (a few bytes
    // a record), never the file's bytes.
    class EditState;
    std::shared_ptr<const EditState> saveEditState() const;
    void restoreEditState(const EditState& state);

    // The attributes a reference to the block would carry, in definition order; empty for a
    // block without them and for ids that are no block.
    std::vector<DxfAttributePrompt> attributePrompts(AcDbObjectId block) const;
    // As insertBlockReference, with the attributes' values in the order of attributePrompts();
    // attributes beyond the values given take their default.
    Acad::ErrorStatus insertBlockReference(const AcDbBlockReference& reference,
                                           const std::vector<std::wstring>& values,
                                           AcDbObjectId& id);
    // Takes back the reference that insertBlockReference added last and has not been taken back,
    // with its attributes: eOk and its id, or eKeyNotFound when there is none. When nothing has
    // taken a handle since, the handle seed goes back too, so the file is as it was before.
    Acad::ErrorStatus eraseLastInsertedReference(AcDbObjectId& id);

private:
    enum class Layout : std::uint8_t { None, Model, Paper, OtherPaper };
    struct BlockInfo {
        Layout layout = Layout::None;
        std::optional<std::size_t> definition;            // in m_structure.blocks()
        std::vector<std::uint32_t> attributeDefinitions;  // ATTDEF records, in order
    };
    // Where an entity appended to a block record goes.
    struct Placement {
        std::uint32_t anchor;  // written before this record
        std::optional<std::uint64_t> owner;
        bool paperSpace;
    };

    DxfDocument(std::filesystem::path path, DxfTagFile tags, DxfRecords records,
                DxfStructure structure);
    static DxfResult<std::unique_ptr<DxfDocument>> load(std::filesystem::path path,
                                                        DxfResult<DxfTagFile> tags,
                                                        DxfReading reading);
    void indexDrawing();
    void indexBlockTable();
    void indexInserts();
    // The blocks of the other paper-space layouts, with the records between BLOCK and ENDBLK.
    struct LayoutBlock {
        std::size_t block;
        std::uint32_t begin;
        std::uint32_t end;
    };
    std::vector<LayoutBlock> otherPaperLayouts() const;
    // The INSERT records of one paper-space layout (0 the active one) in file order.
    void forEachLayoutInsert(std::size_t layout,
                             const std::function<void(std::uint32_t)>& visit) const;
    template <typename ForEachInsert>
    std::vector<DxfNameCount> countByName(ForEachInsert&& forEachInsert) const;
    // The INSERT records of a space in file order.
    void forEachInsert(DxfSpace space, const std::function<void(std::uint32_t)>& visit) const;

    static AcDbObjectId idOf(std::uint32_t record) {
        return AcDbObjectId(std::uint64_t{record} + 1);
    }
    std::optional<std::uint32_t> recordOf(AcDbObjectId id) const;
    std::optional<std::size_t> blockIndex(AcDbObjectId id) const;
    std::optional<std::uint64_t> handleOf(std::uint32_t record) const;
    // Columns x rows of an INSERT record that is an array, else 1.
    std::int64_t instancesOf(std::uint32_t record) const;
    // Whether an entity's code 67 puts it in paper space.
    bool isInPaperSpace(std::uint32_t record) const;
    // The bytes of the record's name (its first code 2), empty when it has none.
    std::string_view nameBytes(std::uint32_t record) const;
    const std::wstring& internedText(std::string_view bytes) const;

    // Edits.
    std::optional<std::uint64_t> newHandle();
    const DxfSection& ensureSection(std::string_view name);
    DxfTable& ensureTable(std::string_view kind);
    void ensureHeader();
    void countTableEntry(DxfTable& table);
    std::size_t addBlockDefinition(std::wstring_view name,
                                   std::optional<std::uint64_t> recordHandle);
    // The block's definition, made now when the file has a record without one.
    std::size_t definitionOf(std::size_t block);
    Placement placementIn(std::size_t block);
    void setBlockFlag(std::size_t definition, std::int64_t flag);
    std::uint32_t appendEntity(const Placement& placement, std::vector<std::uint32_t> tags);
    // An attribute as a reference places it: its definition's points, height and angle transformed.
    struct PlacedAttribute {
        std::uint32_t definition;
        AcGePoint3d firstPoint;
        AcGePoint3d secondPoint;
        double height;
        double rotation;  // degrees
        double widthFactor;
    };
    // The attributes a reference of the block takes, placed as it places them; eInvalidInput when
    // one would stand nowhere (a scale or a point that is not finite).
    Acad::ErrorStatus placeAttributes(std::size_t block, const AcDbBlockReference& reference,
                                      std::vector<PlacedAttribute>& attributes) const;
    // A text's fields as a TEXT or ATTDEF record holds them, with its vertical alignment.
    AcDbText textOf(const DxfAttributeDefinitionView& view, std::int64_t vertical) const;
    // The block of a block table record: eNullObjectId or eWrongObjectType when there is none.
    Acad::ErrorStatus blockOfRecord(AcDbObjectId record, std::size_t& block) const;
    // What every entity a block receives starts with: its handle, owner and AcDbEntity part.
    void addEntityHead(DxfRecordBuilder& b, const Placement& placement);
    // The bytes of a text style's name; empty for no style of the drawing.
    std::string_view styleNameOf(AcDbObjectId style) const;
    // What TEXT and ATTDEF share: the layer and the AcDbText part up to the alignment point.
    void addTextPart(DxfRecordBuilder& b, const AcDbText& text) const;
    PlacedAttribute placeAttribute(std::uint32_t definition, const AcDbBlockReference& reference,
                                   const AcGePoint3d& basePoint) const;
    void insertAttribute(std::uint32_t anchor, const PlacedAttribute& attribute,
                         const std::wstring* value, std::optional<std::uint64_t> owner);
    Acad::ErrorStatus insertReference(const AcDbBlockReference& reference,
                                      const std::vector<std::wstring>& values, AcDbObjectId& id);
    // The APPID entry of an application, found without regard to case.
    std::optional<std::uint32_t> applicationRecord(std::wstring_view name) const;
    // The record that holds the handle; made into an index when first asked for after an edit.
    std::optional<std::uint32_t> recordOfHandle(std::uint64_t handle) const;
    // An entity taken out of the drawing, with the lists that name it.
    void withdrawEntity(std::uint32_t record);
    // What eraseLastInsertedReference needs to take an insert back.
    struct InsertedReference {
        std::vector<std::uint32_t> records;  // INSERT, its ATTRIBs, SEQEND
        std::optional<std::uint64_t> handleBefore;
        std::optional<std::uint64_t> handleAfter;
        std::optional<std::uint32_t> seedTagBefore;
    };

    std::filesystem::path m_path;
    std::vector<std::string> m_repairs;
    DxfTagFile m_tags;
    DxfRecords m_records;
    DxfStructure m_structure;
    DxfHeader m_header;
    std::string m_version;
    DxfTextCodec m_codec;
    DxfDialect m_dialect;
    bool m_blockRecordTable = false;
    DxfSymbolTable m_blocks;
    std::vector<BlockInfo> m_blockInfo;  // parallel to m_blocks
    DxfSymbolTable m_styles;
    std::vector<std::uint32_t> m_modelInserts;
    std::vector<std::uint32_t> m_paperInserts;
    std::optional<std::uint64_t> m_nextHandle;
    std::map<std::wstring, short> m_sessionVariables;
    std::vector<InsertedReference> m_insertedReferences;
    struct BytesHash {
        using is_transparent = void;
        std::size_t operator()(std::string_view bytes) const noexcept {
            return std::hash<std::string_view>{}(bytes);
        }
    };
    mutable std::unordered_map<std::string, std::wstring, BytesHash, std::equal_to<>> m_interned;
    mutable std::unordered_map<std::uint64_t, std::uint32_t> m_handleIndex;
    mutable std::optional<std::uint64_t> m_handleIndexEdits;  // the edit count it was made at
};
