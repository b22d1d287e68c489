// The 285 message records, index -> {text, return code, kind}. Texts are
// stored exactly, trailing blanks included: a text that ends in a blank is
// followed by its argument.
#include "diag/messages.h"

namespace fenk {

const MessageRecord messages[kMessageCount] = {
    {"0000I: No message", 0, 0x40}, /* 0 */
    {"0001S: Output buffer too small; total buffer size: ", 1, 0x23}, /* 1 */
    {"0002S: Data type has not been implemented yet", 25, 0x20}, /* 2 */
    {"0003S: PDU number not in range: ", 3, 0x63}, /* 3 */
    {"0006S: Unexpected NULL pointer as argument to encoder/decoder", 6, 0x60}, /* 4 */
    {"0007S: Version number of generated encoder/decoder differs from that of run-time library, ", 7, 0x63}, /* 5 */
    {"0004S: Version number of control table differs from that of encoder/decoder, ", 7, 0x63}, /* 6 */
    {"0008S: Out of memory; bytes requested: ", 8, 0x24}, /* 7 */
    {"0009S: Out-of-range CHOICE selector: ", 9, 0x03}, /* 8 */
    {"0013S: Time value must be in universal coordinated time format and must end with 'Z'", 12, 0x00}, /* 9 */
    {"0014S: A memory-violation error occurred, signal ", 14, 0x23}, /* 10 */
    {"0023E: Integer or enumerated value too long: ", 10, 0x03}, /* 11 */
    {"0023E: Integer or enumerated value too long: ", 10, 0x04}, /* 12 */
    {"0036E: The first octet is not 0", 5, 0x00}, /* 13 */
    {"0005S: Global data access serialization error", 19, 0x60}, /* 14 */
    {"0060S: User constraint function returns error ", 17, 0x23}, /* 15 */
    {"0061S: Single value constraint violated, value = ", 17, 0x23}, /* 16 */
    {"0061S: Single value constraint violated, value = ", 17, 0x24}, /* 17 */
    {"0061S: Single value constraint violated, value = ", 17, 0x25}, /* 18 */
    {"0061S: Single value constraint violated, value = ", 17, 0x28}, /* 19 */
    {"0061S: Single value constraint violated, value = ", 17, 0x26}, /* 20 */
    {"0061S: Single value constraint violated", 17, 0x20}, /* 21 */
    {"0062S: Value range constraint violated, value = ", 17, 0x23}, /* 22 */
    {"0062S: Value range constraint violated, value = ", 17, 0x24}, /* 23 */
    {"0062S: Value range constraint violated, value = ", 17, 0x25}, /* 24 */
    {"0062S: Value range constraint violated, value = ", 17, 0x28}, /* 25 */
    {"0062S: Value range constraint violated, component ", 17, 0x26}, /* 26 */
    {"0063S: Size constraint violated, length of value = ", 17, 0x23}, /* 27 */
    {"0077S: Size constraint violated, number of SET OF/SEQUENCE OF components = ", 17, 0x23}, /* 28 */
    {"0064S: Permitted alphabet constraint violated, bad character: ", 17, 0x27}, /* 29 */
    {"0065S: Absence constraint violated", 17, 0x20}, /* 30 */
    {"0066S: Presence constraint violated", 17, 0x20}, /* 31 */
    {"0067S: Error in copying an open type", 44, 0x20}, /* 32 */
    {"0079S: User-defined open type user-field-handling function returned a non-zero error code", 40, 0x20}, /* 33 */
    {"0068S: Table constraint violated", 17, 0x20}, /* 34 */
    {"0069S: Component relation constraint violated", 17, 0x20}, /* 35 */
    {"0071S: Value not among the ENUMERATED: ", 17, 0x03}, /* 36 */
    {"0073S: Attempt made to pass a NULL control table pointer", 20, 0x60}, /* 37 */
    {"0074S: NULL function pointer in the control table", 21, 0x60}, /* 38 */
    {"0075S: The control table appears to have been corrupted", 15, 0x60}, /* 39 */
    {"0076S: A negative unsigned integer encountered", 2, 0x20}, /* 40 */
    {"0078S: Type constraint violated, PDU number = ", 17, 0x23}, /* 41 */
    {"0080E: Bit string value too long for local representation", 10, 0x00}, /* 42 */
    {"0003S: PDU number not in range for an open type: ", 44, 0x23}, /* 43 */
    {"0017E: Encoded object identifier value too long for local representation: ", 10, 0x23}, /* 44 */
    {"0081S: End of input reached before message was fully decoded", 4, 0x20}, /* 45 */
    {"0083S: Zero bytes of memory requested", 18, 0x20}, /* 46 */
    {"0084S: Attempt made to allocate a block of memory greater than 'kivblock'; bytes requested = ", 18, 0x23}, /* 47 */
    {"0085S: Memory allocation failed; bytes requested = ", 8, 0x23}, /* 48 */
    {"0086S: Unrecognized memory object, address = ", 18, 0x23}, /* 49 */
    {"0087S: Undefined memory-management error ", 18, 0x23}, /* 50 */
    {"0100S: Unknown encoding rules were requested, use BER/DER/CER/PER/XER only", 22, 0x60}, /* 51 */
    {"0101S: The requested encoding rules are not implemented for the FENK yet: ", 23, 0x66}, /* 52 */
    {"0103S: The requested encoding rules were not linked: ", 23, 0x66}, /* 53 */
    {"0104S: Control table mismatch in ", 29, 0x66}, /* 54 */
    {"0105S: Data type is not supported by the Quarn encoder/decoder", 30, 0x20}, /* 55 */
    {"0106S: Base 10 REAL type is not supported by the Quarn encoder/decoder", 30, 0x20}, /* 56 */
    {"0107S: REAL DLL failed: ", 31, 0x26}, /* 57 */
    {"0108S: The FENK and Quarn encoders do not support indefinite-length encoding", 13, 0x20}, /* 58 */
    {"0109S: Constraint checker DLL failed: ", 35, 0x26}, /* 59 */
    {"0110S: Value comparator DLL failed: ", 36, 0x26}, /* 60 */
    {"0111S: Value comparator code not linked or initialized", 37, 0x20}, /* 61 */
    {"0112S: REAL code not linked or initialized", 32, 0x20}, /* 62 */
    {"0113S: Tracing code not linked or initialized", 39, 0x20}, /* 63 */
    {"0115S: OBJECT IDENTIFIER converter DLL failed: ", 26, 0x26}, /* 64 */
    {"0116S: Data type is not supported by DER time-optimized encoder", 30, 0x20}, /* 65 */
    {"0118S: The encoder/decoder was generated without support for selected encoding rules:", 23, 0x66}, /* 66 */
    {"0139S: Controltable shared library failed to load: ", 97, 0x26}, /* 67 */
    {"0140S: Controltable shared library failed to unload: ", 98, 0x26}, /* 68 */
    {"0088E: Mandatory extension field is not present", 5, 0x00}, /* 69 */
    {"0131S: Can not open input file: ", 86, 0x26}, /* 70 */
    {"0010S: Bad OBJECT IDENTIFIER: ", 10, 0x03}, /* 71 */
    {"0011S: Unexpected NULL pointer in input", 11, 0x00}, /* 72 */
    {"0012S: Out-of-range value in time type", 12, 0x00}, /* 73 */
    {"0012S: Out-of-range value in time type. Month = ", 12, 0x23}, /* 74 */
    {"0012S: Out-of-range value in time type. Day = ", 12, 0x23}, /* 75 */
    {"0012S: Out-of-range value in time type. Hour = ", 12, 0x23}, /* 76 */
    {"0012S: Out-of-range value in time type. Minute = ", 12, 0x23}, /* 77 */
    {"0012S: Out-of-range value in time type. Second = ", 12, 0x23}, /* 78 */
    {"0012S: Out-of-range value in time type. Millisecond = ", 12, 0x23}, /* 79 */
    {"0016S: Size constraint exceeded, length of value = ", 16, 0x03}, /* 80 */
    {"0072E: Length of encoded component unexpectedly 0, field ", 5, 0x03}, /* 81 */
    {"0089E: Length of encoded data of ANY is 0", 5, 0x00}, /* 82 */
    {"0090E: Length of encoded data of OpenType is 0", 5, 0x00}, /* 83 */
    {"0091E: Invalid decimal REAL", 5, 0x00}, /* 84 */
    {"0092E: Invalid MixedReal, kind = ", 5, 0x03}, /* 85 */
    {"0095S: Mandatory field is not present in extension group: ", 5, 0x21}, /* 86 */
    {"0095E: Mandatory field is not present in extension group: ", 5, 0x03}, /* 87 */
    {"0119S: Error converting character to UTF8 format at position ", 5, 0x23}, /* 88 */
    {"0141E: The 'decoded' field and 'pduNum' field were initialized but AUTOMATIC_ENCDEC flag was not specified", 5, 0x00}, /* 89 */
    {"0142E: The 'decoded' field and AUTOMATIC_ENCDEC flag are specified but the 'pduNum' field was not initialized", 5, 0x00}, /* 90 */
    {"0143E: The DeferDecoding directive was used but the 'length' field was not initialized", 5, 0x00}, /* 91 */
    {"0018E: Tag needlessly long", 5, 0x00}, /* 92 */
    {"0019E: Tag too long: ", 10, 0x03}, /* 93 */
    {"0020E: Exponent needlessly long", 5, 0x00}, /* 94 */
    {"0021E: Exponent too long: ", 10, 0x03}, /* 95 */
    {"0022E: Integer or enumerated value needlessly long", 5, 0x00}, /* 96 */
    {"0024E: Sub-identifier needlessly long", 5, 0x00}, /* 97 */
    {"0025E: Sub-identifier too long: ", 10, 0x03}, /* 98 */
    {"0026S: Length too long: ", 10, 0x24}, /* 99 */
    {"0027S: Size too long: ", 10, 0x23}, /* 100 */
    {"0028E: Non-standard EOC octets", 5, 0x00}, /* 101 */
    {"0030S: Unknown size ", 15, 0x23}, /* 102 */
    {"0031S: Inconsistent lengths", 5, 0x20}, /* 103 */
    {"0033E: Tag mismatch or tag not expected: ", 5, 0x02}, /* 104 */
    {"0034E: PDU number and input tags do not match: ", 9, 0x22}, /* 105 */
    {"0035E: The first octet is not in the range 0-7", 5, 0x00}, /* 106 */
    {"0037E: Value misencoded or length wrong for value", 5, 0x00}, /* 107 */
    {"0038E: Expected digits in mantissa", 5, 0x00}, /* 108 */
    {"0039E: Expected digits in exponent", 5, 0x00}, /* 109 */
    {"0040E: Invalid NR1 (real) encoding", 5, 0x00}, /* 110 */
    {"0041E: Invalid NR2 (real) encoding", 5, 0x00}, /* 111 */
    {"0042E: Invalid NR3 (real) encoding", 5, 0x00}, /* 112 */
    {"0043E: REAL 0 with contents found", 5, 0x00}, /* 113 */
    {"0044E: Reserved real encoding", 5, 0x00}, /* 114 */
    {"0046E: Found NULL embedded in null-terminated STRING", 5, 0x00}, /* 115 */
    {"0047E: Tag not recognized: ", 5, 0x02}, /* 116 */
    {"0048E: Field repeated", 5, 0x00}, /* 117 */
    {"0049E: Field omitted", 5, 0x00}, /* 118 */
    {"0050S: Expected EOC octets", 5, 0x20}, /* 119 */
    {"0051S: Found primitive encoding with indefinite length", 5, 0x20}, /* 120 */
    {"0052S: Expected constructed type but found primitive", 5, 0x20}, /* 121 */
    {"0053S: Expected primitive type but found constructed", 5, 0x20}, /* 122 */
    {"0054S: PDU tag not recognized: ", 5, 0x62}, /* 123 */
    {"0055E: Tag encoding has too many leading nonsignificant octets: ", 10, 0x23}, /* 124 */
    {"0056S: This error cannot happen; inform KIV, code = ", 18, 0x23}, /* 125 */
    {"0057S: Decoder argument for length is negative; length = ", 6, 0x63}, /* 126 */
    {"0058E: Expected tag, found EOC octets", 5, 0x00}, /* 127 */
    {"0059E: The value is not an encoding of a single ASN.1 type", 5, 0x00}, /* 128 */
    {"0099E: Real value too large for local representation", 5, 0x00}, /* 129 */
    {"0015E: Object identifier has too many subidentifiers: ", 10, 0x23}, /* 130 */
    {"0029E: Too many OPTIONAL fields: ", 10, 0x23}, /* 131 */
    {"0032E: Too many extension additions: ", 10, 0x23}, /* 132 */
    {"0093E: Too many optional fields in extension group: ", 10, 0x23}, /* 133 */
    {"0094E: Fatal error when encoding extension addition", 18, 0x20}, /* 134 */
    {"0117S: Expected definite length, found indefinite length DER encoding", 5, 0x26}, /* 135 */
    {"0120S: Incorrect sequence of octets in UTF8String", 5, 0x20}, /* 136 */
    {"0121E: Encoding contains a value for a removed field", 5, 0x00}, /* 137 */
    {"0121S: Encoding contains a value for a removed field: ", 5, 0x01}, /* 138 */
    {"0122S: End of input reached before PDU was fully decoded; additional bytes expected: ", 18, 0x23}, /* 139 */
    {"0125I: End of input file detected; no PDU was decoded from: ", 85, 0x26}, /* 140 */
    {"0136E: Length not a multiple of character width, length: ", 5, 0x23}, /* 141 */
    {"0137E: Encoding of an object identifier must be primitive: ", 5, 0x20}, /* 142 */
    {"0097S: Stack overflow. Provided buffer is too small; requested size: ", 1, 0x23}, /* 143 */
    {"0098S: Stack internal inconsistancy had been detected", 14, 0x20}, /* 144 */
    {"0123S: PER tracing DLL failed: ", 84, 0x26}, /* 145 */
    {"0132S: Buffer provided for temporary memory is too small; Bytes requested: ", 8, 0x23}, /* 146 */
    {"0133S: Internal error: Problem with temporary buffer.  Please contact KIV.", 18, 0x60}, /* 147 */
    {"0144E: Integer or enumerated value too long: length = ", 10, 0x03}, /* 148 */
    {"0144E: Integer or enumerated value too long: length = ", 10, 0x04}, /* 149 */
    {"0162S: Pattern constraint violated, value = ", 17, 0x26}, /* 150 */
    {"0162S: Pattern constraint violated", 17, 0x20}, /* 151 */
    {"0163S: Pattern constraint checker not linked or initialized", 101, 0x20}, /* 152 */
    {"0165S: The KIV.OBJHANDLE directive was applied to an item that has fragmented encodings", 102, 0x20}, /* 153 */
    {"0149E: Expecting XML start-tag", 5, 0x00}, /* 154 */
    {"0150E: Expecting XML start-tag or empty-tag", 5, 0x00}, /* 155 */
    {"0151E: XML tag name does not match PDU number: ", 5, 0x06}, /* 156 */
    {"0152E: Unrecognized or ambiguous PDU name: ", 5, 0x06}, /* 157 */
    {"0153E: XML end-tag name does not match XML start-tag name: ", 5, 0x06}, /* 158 */
    {"0154E: Expecting XML end-tag", 5, 0x00}, /* 159 */
    {"0155E: Expecting XML value of type ", 5, 0x06}, /* 160 */
    {"0156E: Expecting <true/> or <false/>", 5, 0x00}, /* 161 */
    {"0157E: Expecting value for a component of SET / SEQUENCE / CHOICE but XML tag name does not match any component identifier: ", 5, 0x06}, /* 162 */
    {"0158E: Expecting XML empty-element tag for the named value but XML tag name does not match any named value: ", 5, 0x06}, /* 163 */
    {"0159E: Expecting mandatory whitespace between SET OF / SEQUENCE OF element values of space-separated list", 5, 0x00}, /* 164 */
    {"0160E: Control table is not usable by XER", 10, 0x00}, /* 165 */
    {"0166E: XML tag name expected", 5, 0x00}, /* 166 */
    {"0167E: Invalid syntax for XML tag", 5, 0x00}, /* 167 */
    {"0168E: Invalid XML tag name ", 5, 0x06}, /* 168 */
    {"0169E: XML tag name too long, length of name = ", 10, 0x04}, /* 169 */
    {"0170E: XML comment expected", 5, 0x00}, /* 170 */
    {"0171E: Illegal XML escape sequence found", 5, 0x00}, /* 171 */
    {"0172E: Unexpected XML comment", 5, 0x00}, /* 172 */
    {"0174E: Canonical XER restrictions violated: ", 5, 0x06}, /* 173 */
    {"0175E: Illegal character in XML character string: ", 5, 0x07}, /* 174 */
    {"0176E: XML tag name does not match SET OF / SEQUENCE OF element type: ", 5, 0x06}, /* 175 */
    {"0177E: Expecting XML empty-tag", 5, 0x00}, /* 176 */
    {"0178E: XML tag does not match the expected one: ", 5, 0x06}, /* 177 */
    {"0187E: Invalid XML tag attribute", 5, 0x00}, /* 178 */
    {"0188E: Equal sign '=' after XML tag attribute expected", 5, 0x00}, /* 179 */
    {"0010S: Bad OBJECT IDENTIFIER: ", 103, 0x03}, /* 180 */
    {"0184E: The nesting level of constructed string encodings exceeded the limitation", 108, 0x20}, /* 181 */
    {"0185E: The nesting level of encoding of SET, SEQUENCE, SET OF, SEQUENCE OF or CHOICE exceeded the limitation", 109, 0x20}, /* 182 */
    {"0114S: API DLL failed to load: ", 41, 0x26}, /* 183 */
    {"0186S: Constraints applied to FixedTypeValueSetFields or VariableTypeValueSetFields are not currently supported.", 25, 0x20}, /* 184 */
    {"E0178E: The number of bits is not multiple of eight in the bitstring's segment #", 5, 0x04}, /* 185 */
    {"0189S: Illegal character in XML character reference: ", 5, 0x27}, /* 186 */
    {"0190S: Illegal XML character reference", 5, 0x20}, /* 187 */
    {"0191S: Reference to unknown entity: ", 5, 0x26}, /* 188 */
    {"0192S: Illegal entity reference", 5, 0x20}, /* 189 */
    {"0193S: Undefined namespace prefix encountered: ", 5, 0x26}, /* 190 */
    {"0194S: CDATA section not finished", 5, 0x20}, /* 191 */
    {"0195S: CDATA section expected", 5, 0x20}, /* 192 */
    {"0196S: Illegal character in XML document: ", 5, 0x27}, /* 193 */
    {"0197S: Too complex XML document - probably recursive or deeply nested internal entities", 10, 0x20}, /* 194 */
    {"0198S: This type of entity is not supported yet", 25, 0x20}, /* 195 */
    {"0199S: The buffer is too small for the encoded value", 1, 0x20}, /* 196 */
    {"0200S: Ill formed entity: ", 5, 0x26}, /* 197 */
    {"0201S: Entity does not contain well-formed XML", 5, 0x20}, /* 198 */
    {"0202S: Expecting XML start tag or document type declaration", 5, 0x20}, /* 199 */
    {"0203S: Illegal DTD", 5, 0x20}, /* 200 */
    {"0204S: Duplicate DTD", 5, 0x20}, /* 201 */
    {"0205S: Invalid notation definition", 5, 0x20}, /* 202 */
    {"0206S: Invalid character in a name: ", 5, 0x26}, /* 203 */
    {"0207S: UTF8 continuation byte without start byte in a name: ", 5, 0x26}, /* 204 */
    {"0208S: Unfinished UTF8 multi-byte sequence in a name: ", 5, 0x26}, /* 205 */
    {"0209S: Missing local part of a QName: ", 5, 0x26}, /* 206 */
    {"0210S: Missing prefix in a QName: ", 5, 0x26}, /* 207 */
    {"0211S: Local part of a QName contains colon(s): ", 5, 0x26}, /* 208 */
    {"0212S: Namespace prefix defined twice: ", 5, 0x26}, /* 209 */
    {"0213S: Default namespace defined twice", 5, 0x20}, /* 210 */
    {"0214S: XML tag expected", 5, 0x20}, /* 211 */
    {"0215S: The named value is not recognized : ", 5, 0x26}, /* 212 */
    {"0216S: A named value is forbidden for this type : ", 5, 0x26}, /* 213 */
    {"0217S: The BOOLEAN value is not recognized : ", 5, 0x26}, /* 214 */
    {"0218S: The name of attribute is repeated : ", 5, 0x26}, /* 215 */
    {"0219S: The plus sign is forbidden without GLOBAL-DEFAULTS encoding instruction with MODIFIED-ENCODINGS keyword", 5, 0x20}, /* 216 */
    {"0220S: Negative zero (-0) is forbidden without GLOBAL-DEFAULTS encoding instruction with MODIFIED-ENCODINGS keyword", 5, 0x20}, /* 217 */
    {"0221S: Leading zeros are forbidden without GLOBAL-DEFAULTS encoding instruction with MODIFIED-ENCODINGS keyword", 5, 0x20}, /* 218 */
    {"0222S: Whitespaces are found in BASE64 component of LIST value encoding", 5, 0x20}, /* 219 */
    {"0223S: Too many named values for BIT STRING : ", 5, 0x23}, /* 220 */
    {"0224S: Incorrect sequence of octets in BASE64 encodings", 5, 0x20}, /* 221 */
    {"0225S: End of an attribute encoding expected", 5, 0x20}, /* 222 */
    {"0227S: The length of time value is too long ", 10, 0x23}, /* 223 */
    {"0228S: Value of the 'nil' attribute is not either true/false or 1/0", 5, 0x20}, /* 224 */
    {"0229S: Unknown attribute : ", 5, 0x26}, /* 225 */
    {"0230S: Invalid URI value encountered : ", 5, 0x26}, /* 226 */
    {"0231S: Wrong URI value encountered : ", 5, 0x26}, /* 227 */
    {"0232S: Wrong prefix value encountered : ", 5, 0x26}, /* 228 */
    {"0233S: Wrong unprefixed name encountered : ", 5, 0x26}, /* 229 */
    {"0234S: Size constraint on sequence of embedded values violated; number of components =", 17, 0x23}, /* 230 */
    {"0234S: Size constraint on sequence of embedded values violated", 17, 0x20}, /* 231 */
    {"0235S: The name of the alternative of the enclosed [USE-UNION]CHOICE to be encoded is in conflict with the name of alternative of the enclosing [USE-TYPE] CHOICE : ", 5, 0x26}, /* 232 */
    {"0236S: An encoded value with DEFAULT-FOR-EMPTY instruction applied should not be empty", 5, 0x20}, /* 233 */
    {"0237S: Encoding of list item should not be empty", 5, 0x20}, /* 234 */
    {"0238S: Whitespaces are not allowed in LIST value encoding", 5, 0x20}, /* 235 */
    {"0239S: Sequence of ordered values indicates unknown or absent field to be encoded", 5, 0x20}, /* 236 */
    {"0240S: Size constraint on sequence of ordered values violated; number of components = ", 17, 0x23}, /* 237 */
    {"0241S: EmptyElementReal is forbidden with GLOBAL-DEFAULTS encoding instruction with MODIFIED-ENCODINGS keyword applied", 5, 0x20}, /* 238 */
    {"0242S: Exponential notation is forbidden if DECIMAL instruction is applied", 5, 0x20}, /* 239 */
    {"0243S: Negative zero (-0) is forbidden if DECIMAL instruction is applied", 5, 0x20}, /* 240 */
    {"0244S: Plus/minus infinity and not-a-number are forbidden if DECIMAL encoding instruction is applied", 5, 0x20}, /* 241 */
    {"0244S: INF (infinity), -INF (negative infinity), and NaN (Not a Number) are forbidden without GLOBAL-DEFAULTS encoding instruction with MODIFIED-ENCODINGS keyword", 5, 0x20}, /* 242 */
    {"0245S: Leading zeros are forbidden in exponent if GLOBAL-DEFAULTS encoding instruction with MODIFIED-ENCODINGS keyword is not applied", 5, 0x20}, /* 243 */
    {"0246S: Duplicate values are present in the sequence of ordered values : ", 5, 0x26}, /* 244 */
    {"0247S: Value does not conform to 'AnyAttributeFormat' : ", 5, 0x26}, /* 245 */
    {"0248S: XML name expected", 5, 0x20}, /* 246 */
    {"0249S: The value of the character string type with a WHITESPACE COLLAPSE instruction applied should not contain leading or trailing spaces or multiple adjacent spaces", 5, 0x20}, /* 247 */
    {"0250S: Illegal character in the encoding: ", 5, 0x27}, /* 248 */
    {"0251S: A nil identification attribute is not allowed for this type: ", 5, 0x26}, /* 249 */
    {"0252S: A type identification attribute with an unexpected value is found: ", 5, 0x26}, /* 250 */
    {"0253S: The prefix 'xml' cannot be bound to any namespace other than XML namespace; no other prefix may be bound to this namespace:", 5, 0x26}, /* 251 */
    {"0254S: Compression/decompression code not linked or initialized", 115, 0x20}, /* 252 */
    {"0255S: Encoding compression/decompression error, code ", 115, 0x23}, /* 253 */
    {"0256S: Value does not conform to the 'AnyElementFormat' : ", 5, 0x26}, /* 254 */
    {"0258E: Fragments within a PER encoding are not grouped correctly", 5, 0x00}, /* 255 */
    {"0259S: User application reported an error, error code: ", 18, 0x23}, /* 256 */
    {"0260E: Length of encoded data of ContentsConstraint is 0", 5, 0x00}, /* 257 */
    {"0261E: Character code too long", 10, 0x23}, /* 258 */
    {"0262S: Encoding of a TIME type consists of more than one fragment", 5, 0x20}, /* 259 */
    {"0263E: The padding bits are not zero", 5, 0x00}, /* 260 */
    {"0263E: The padding bits after the length encoding are not zero", 5, 0x00}, /* 261 */
    {"0263E: The padding bits after the PDU are not zero", 5, 0x00}, /* 262 */
    {"0266E: Document Type Declaration is not allowed", 5, 0x20}, /* 263 */
    {"0275S: Feature is not supported by the SAX runtime: ", 25, 0x26}, /* 264 */
    {"0276S: Internal error in the SAX runtime; inform KIV support", 18, 0x20}, /* 265 */
    {"0279S: Invalid syntax of a processing instruction", 5, 0x20}, /* 266 */
    {"0280S: Processing instructions are not allowed", 5, 0x20}, /* 267 */
    {"0281S: XML parser not linked", 18, 0x20}, /* 268 */
    {"0282S: Error in XML declaration", 5, 0x20}, /* 269 */
    {"0325E: None of CHOICE type's alternatives fits the encoded value", 5, 0x20}, /* 270 */
    {"0326S: PropertySettings constraint violated: ", 17, 0x06}, /* 271 */
    {"0327S: Duration range constraint violated, value = ", 17, 0x06}, /* 272 */
    {"0328S: TimePoint range constraint violated, value = ", 17, 0x06}, /* 273 */
    {"0328S: TimePoint range constraint violated:", 17, 0x06}, /* 274 */
    {"0329S: Recurrence range constraint violated, number of digits used to specify the number of recurrences = ", 17, 0x03}, /* 275 */
    {"0329S: Recurrence range constraint violated", 17, 0x06}, /* 276 */
    {"0330E: Invalid canonical form of time value: ", 5, 0x06}, /* 277 */
    {"0012S: Out-of-range value in time type. Week = ", 12, 0x23}, /* 278 */
    {"0012S: Out-of-range value in time type. Century = ", 12, 0x23}, /* 279 */
    {"0012S: Out-of-range value in time type. Year = ", 12, 0x23}, /* 280 */
    {"0331E: The name of the root element does not match the name in the DTD: ", 5, 0x06}, /* 281 */
    {"0329S: Recurrence range constraint violated, number of digits used to specify the number of recurrences = Unlimited", 17, 0x20}, /* 282 */
    {"0333E: Unsupported XML encoding format was detected.  Please report the document and the schema to your fenkapi support contact: ", 10, 0x26}, /* 283 */
    {"X999I: Hindmost message", 0, 0x40}, /* 284 */
};

// The ends of the table are marked by records that are never raised.
static_assert(sizeof messages / sizeof messages[0] == 285);

}  // namespace fenk
